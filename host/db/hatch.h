// Areas filled with a pattern or a colour.
#pragma once

#include <string>
#include <vector>

#include "db/entity.h"
#include "db/id_array.h"
#include "ge/vector2d.h"

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
    enum HatchEdgeType { kLine = 1, kCirArc = 2, kEllArc = 3, kSpline = 4 };
    enum HatchPatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
    enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };

    AcDbHatch();
    ~AcDbHatch() override;

    double elevation() const { return look(elevation_); }
    AcGeVector3d normal() const { return look(normal_); }
    const ACHAR* patternName() const { return look(patternName_).c_str(); }
    HatchPatternType patternType() const { return look(patternType_); }
    bool isSolidFill() const { return look(solid_); }
    bool associative() const { return look(associative_); }
    HatchStyle hatchStyle() const { return look(style_); }
    /// The same whether or not the hatch is open.
    HatchStyle styleOf() const { return style_; }
    /// Radians.
    double patternAngle() const { return look(patternAngle_); }
    double patternScale() const { return look(patternScale_); }
    bool patternDouble() const { return look(patternDouble_); }

    int numLoops() const;
    /// Flags of HatchLoopType; 0 for no such loop.
    Adesk::Int32 loopTypeAt(int index) const;
    /// A loop drawn as a polyline, in the object coordinate system. eInvalidIndex for no such loop,
    /// eNotApplicable for a loop of edges.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGePoint2dArray& vertices,
                                AcGeDoubleArray& bulges) const;
    /// A loop of edges, in the object coordinate system and in the direction of the loop: new
    /// curves that the caller deletes, and the HatchEdgeType of each. Lines are AcGeLineSeg2d, arcs
    /// AcGeCircArc2d, other edges AcGeCurve2d of no further kind. eNotApplicable for a polyline.
    Acad::ErrorStatus getLoopAt(int index, Adesk::Int32& type, AcGeVoidPointerArray& edges,
                                AcGeIntArray& edgeTypes) const;
    /// Adds the objects that the loops, or one of them, follow when the hatch is associative.
    /// eInvalidIndex for no such loop.
    Acad::ErrorStatus getAssocObjIds(AcDbObjectIdArray& ids) const;
    Acad::ErrorStatus getAssocObjIdsAt(int index, AcDbObjectIdArray& ids) const;

    int numPatternDefinitions() const { return static_cast<int>(look(patternLines_).size()); }
    /// One family of parallel lines of the pattern, turned and scaled as it is drawn: their angle
    /// in radians, a point of the first, the way to the next, and dashes as in linetypes; all in
    /// the object coordinate system. eInvalidIndex for no such family.
    Acad::ErrorStatus getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                             double& offsetX, double& offsetY,
                                             AcGeDoubleArray& dashes) const;

    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    struct Edge;
    struct Loop;
    struct PatternLine {
        double angle = 0.0;
        AcGePoint2d base;
        AcGeVector2d offset;
        std::vector<double> dashes;
    };
    class Reader;
    class Writer;

    AcGeMatrix3d toWorld() const;

    std::vector<Loop> loops_;
    std::vector<PatternLine> patternLines_;
    std::vector<AcGePoint2d> seeds_; // points that the area was picked by
    std::wstring patternName_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double elevation_ = 0.0;
    double patternAngle_ = 0.0;
    double patternScale_ = 1.0;
    HatchPatternType patternType_ = kPreDefined;
    HatchStyle style_ = kNormal;
    bool solid_ = false;
    bool associative_ = false;
    bool patternDouble_ = false;
};
