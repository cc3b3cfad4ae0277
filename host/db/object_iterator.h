// Iterators over the parts of an entity: a polyline's vertices, a reference's attributes.
#pragma once

#include "db/entity.h"

class AcDbObjectIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObjectIterator);

    /// The part itself while its owner is in no database, else null: open it by its id.
    virtual AcDbEntity* entity() const = 0;
    /// The part's id, null while its owner is in no database.
    virtual AcDbObjectId objectId() const = 0;
    virtual bool done() const = 0;
    /// Goes to the first part, or to the last.
    virtual void start(bool atBeginning = true, bool skipErased = true) = 0;
    virtual void step(bool backward = false, bool skipErased = true) = 0;
    /// eInvalidInput when it is no part of the owner.
    virtual Acad::ErrorStatus seek(AcDbObjectId id) = 0;
    virtual Acad::ErrorStatus seek(const AcDbEntity* part) = 0;
};
