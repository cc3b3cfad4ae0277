#include "ed/document_lock.h"

#include "db/object.h"
#include "ed/documents.h"

AcAxDocLock::AcAxDocLock() : AcAxDocLock(curDoc()) {}

AcAxDocLock::AcAxDocLock(const AcDbObjectId& id) : AcAxDocLock(id.database()) {}

AcAxDocLock::AcAxDocLock(AcDbDatabase* database) : AcAxDocLock(acDocManager->document(database)) {}

AcAxDocLock::AcAxDocLock(AcApDocument* document)
    : document_(document), status_(acDocManager->lockDocument(document)) {}

AcAxDocLock::~AcAxDocLock() {
    if (status_ == Acad::eOk) acDocManager->unlockDocument(document_);
}
