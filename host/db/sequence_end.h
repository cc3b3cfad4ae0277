// The mark behind an entity's vertices or attributes in files.
#pragma once

#include "db/entity.h"

class AcDbSequenceEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);

    AcDbSequenceEnd() = default;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& /*transform*/) override {
        return Acad::eOk;
    }
};
