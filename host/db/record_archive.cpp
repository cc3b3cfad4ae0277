#include "db/record_archive.h"

#include "db/database.h"
#include "db/residence.h"

void headless::readAgain(const AcDbObject& object, const RecordArchive::Visit& visit) {
    AcDbDatabase* const db = object.database();
    const SourceSpan span = Residence::source(object);
    if (db == nullptr || db->recordArchive() == nullptr || span.length == 0) return;
    db->recordArchive()->read(*db, span, visit);
}
