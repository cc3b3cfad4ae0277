#include "component/rename_dict.h"

#include <dbdict.h>

#include "frame/object_handle.h"
#include "frame/working_database.h"

void Common::RenameDict(CString oldName, CString newName) {
    AcDbDatabase* const db = frame::orWorking(nullptr);
    if (db == nullptr) return;
    const WriteHandle<AcDbDictionary> root(db->namedObjectsDictionaryId());
    if (root && root->has(oldName)) root->setName(oldName, newName);
}
