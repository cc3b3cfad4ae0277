// A document's lock for the length of a scope.
#pragma once

#include "db/object_id.h"
#include "rx/error_status.h"

class AcApDocument;
class AcDbDatabase;

/// Locks a document for writing and gives the lock back when it goes.
class AcAxDocLock {
public:
    /// The current document.
    AcAxDocLock();
    /// The document of an object, or of a database.
    explicit AcAxDocLock(const AcDbObjectId& id);
    explicit AcAxDocLock(AcDbDatabase* database);
    ~AcAxDocLock();
    AcAxDocLock(const AcAxDocLock&) = delete;
    AcAxDocLock& operator=(const AcAxDocLock&) = delete;

    /// eInvalidInput when there was no such document to lock.
    Acad::ErrorStatus lockStatus() const { return status_; }
    AcApDocument* document() const { return document_; }

private:
    explicit AcAxDocLock(AcApDocument* document);

    AcApDocument* document_;
    Acad::ErrorStatus status_;
};
