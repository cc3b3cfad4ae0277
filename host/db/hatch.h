// Areas filled with a pattern or a colour.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "db/entity.h"

/// A filled area bounded by loops, in the plane of its normal at its elevation. What drawings hold
/// can be read; loops cannot be edited.
class AcDbHatch : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbHatch);

    enum HatchLoopType {
        kDefault = 0,
        kExternal = 1,
        kPolyline = 2,
        kDerived = 4,
        kTextbox = 8,
        kOutermost = 0x10,
        kNotClosed = 0x20,
        kSelfIntersecting = 0x40,
        kTextIsland = 0x80,
        kDuplicate = 0x100
    };
    enum HatchPatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
    enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };

    AcDbHatch();
    ~AcDbHatch() override;

    double elevation() const;
    AcGeVector3d normal() const;
    const ACHAR* patternName() const;
    HatchPatternType patternType() const;
    bool isSolidFill() const;
    bool associative() const;
    HatchStyle hatchStyle() const;
    double patternAngle() const;
    double patternScale() const;
    bool patternDouble() const;

    int numLoops() const;
    /// Flags of HatchLoopType; 0 for no such loop.
    Adesk::Int32 loopTypeAt(int index) const;
    /// A loop drawn as a polyline, in the object coordinate system. eInvalidIndex for no such loop,
    /// eNotApplicable for a loop of edges.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                AcGeDoubleArray& bulges) const;

    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    struct Data;
    std::unique_ptr<Data> data_;
};
