// The parts of AcUtSymTbl that list the names of a drawing's blocks and styles.
#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"

std::set<CString> AcUtSymTbl::RecordStyleNames(AcRxClass* recordClass, AcDbDatabase* db) {
    std::set<CString> names;
    AcDbObjectIdArray ids;
    collectSymbolIds(recordClass, ids, db);
    for (int i = 0; i < ids.length(); ++i)
        names.insert(GetStyleName(ids[i]));
    return names;
}

std::set<CString> AcUtSymTbl::GetAllBlockName(AcDbDatabase* db) {
    return RecordStyleNames(AcDbBlockTableRecord::desc(), db);
}
