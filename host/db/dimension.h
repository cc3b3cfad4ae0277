// Dimensions. What they look like stands in an anonymous block that each refers to.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "db/entity.h"

class AcDbDimension : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimension);

    /// The block that draws the dimension, null when there is none.
    AcDbObjectId dimBlockId() const { return look(block_); }
    Acad::ErrorStatus setDimBlockId(AcDbObjectId block);
    /// How far the block is moved from where it was drawn, in world coordinates.
    /// A dimension that is turned, mirrored or scaled gets a block of its own when it is closed,
    /// with what the one before draws put in place: sizes and arrows grow with it, and texts are
    /// not mirrored. The one before stays, as others may share it.
    AcGePoint3d dimBlockPosition() const;
    Acad::ErrorStatus setDimBlockPosition(const AcGePoint3d& position);

    /// The text instead of the measurement: empty or "<>" for none; a copy, which the caller frees
    /// with acutDelString.
    ACHAR* dimensionText() const;
    Acad::ErrorStatus setDimensionText(const ACHAR* text);
    /// The measurement that the file states. eNotApplicable when it states none.
    Acad::ErrorStatus measurement(double& value) const;
    AcGePoint3d textPosition() const { return look(textPosition_); }
    /// False for a text that was moved from where the style puts it.
    bool isUsingDefaultTextPosition() const { return !look(textMoved_); }
    double textRotation() const { return look(textRotation_); }
    double horizontalRotation() const { return look(horizontalRotation_); }
    AcDbObjectId dimensionStyle() const { return look(style_); }
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style) { return change(style_, style); }
    AcGeVector3d normal() const { return look(normal_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    /// What each kind has of its own. Points are in world coordinates, angles radians.
    struct Geometry {
        AcGePoint3d definition;            // group 10: a point of the dimension line, a centre, ...
        std::array<AcGePoint3d, 5> points; // groups 13 to 17
        double length = 0.0;               // of a leader
        double rotation = 0.0;             // of the dimension line
        double oblique = 0.0;              // of the extension lines
        bool usesX = false;                // measures along x
    };

    AcDbDimension() = default;

    const Geometry& geometry() const { return look(geometry_); }
    /// The point of groups 13 to 17, numbered like these.
    const AcGePoint3d& point(int group) const {
        return geometry().points[static_cast<std::size_t>(group - kFirstPoint)];
    }
    static constexpr int kFirstPoint = 13;

    /// The normal whether or not the dimension is open.
    const AcGeVector3d& normalOf() const { return normal_; }

    /// Called when all was read: turns points that records hold in object coordinates.
    virtual void geometryToWorld(Geometry& /*geometry*/) const {}
    /// The kind's number in the flags of records, or -1 for a kind that has its own record name.
    virtual int kindNumber() const = 0;
    /// The groups behind those that all kinds have.
    virtual void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const = 0;

    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool keepsExtents() const override { return false; }
    Acad::ErrorStatus subClose() override;

private:
    bool measuresAngle() const { return kindNumber() == 2 || kindNumber() == 5; }
    /// Where the block's contents are drawn.
    AcGeMatrix3d picture() const;
    Acad::ErrorStatus transformPicture(const AcGeMatrix3d& transform, const AcGeVector3d& normal);
    void transformAngles(const AcGeMatrix3d& local);
    void readGeometry(const headless::DxfTag& tag);
    void writeFlags(headless::DxfOutput& out) const;

    Geometry geometry_;
    AcDbObjectId block_;
    AcDbObjectId style_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGePoint3d blockPosition_; // In the object coordinate system, as files hold it.
    // Where the block is drawn until the dimension gets one of its own; null: moved only.
    std::shared_ptr<const AcGeMatrix3d> picture_;
    AcGePoint3d textPosition_;
    double textRotation_ = 0.0;
    double horizontalRotation_ = 0.0;
    double lineSpacing_ = 1.0;
    int lineSpacingStyle_ = 1;
    int attachment_ = 5; // of the text, as of multiline text: in the middle
    bool textMoved_ = false;
    std::optional<double> measurement_;
    std::wstring text_;
};

/// The distance of two points.
class AcDbAlignedDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbAlignedDimension);
    AcDbAlignedDimension() = default;

    AcGePoint3d xLine1Point() const { return point(13); }
    AcGePoint3d xLine2Point() const { return point(14); }
    AcGePoint3d dimLinePoint() const { return geometry().definition; }
    double oblique() const { return geometry().oblique; }

protected:
    int kindNumber() const override { return 1; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// The distance of two points along a direction.
class AcDbRotatedDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRotatedDimension);
    AcDbRotatedDimension() = default;

    AcGePoint3d xLine1Point() const { return point(13); }
    AcGePoint3d xLine2Point() const { return point(14); }
    AcGePoint3d dimLinePoint() const { return geometry().definition; }
    double rotation() const { return geometry().rotation; }
    double oblique() const { return geometry().oblique; }

protected:
    int kindNumber() const override { return 0; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// The angle between two lines.
class AcDb2LineAngularDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDb2LineAngularDimension);
    AcDb2LineAngularDimension() = default;

    AcGePoint3d xLine1Start() const { return point(13); }
    AcGePoint3d xLine1End() const { return point(14); }
    AcGePoint3d xLine2Start() const { return point(15); }
    AcGePoint3d xLine2End() const { return geometry().definition; }
    AcGePoint3d arcPoint() const { return point(16); }

protected:
    void geometryToWorld(Geometry& geometry) const override;
    int kindNumber() const override { return 2; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// The angle between two points about a third.
class AcDb3PointAngularDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDb3PointAngularDimension);
    AcDb3PointAngularDimension() = default;

    AcGePoint3d arcPoint() const { return geometry().definition; }
    AcGePoint3d xLine1Point() const { return point(13); }
    AcGePoint3d xLine2Point() const { return point(14); }
    AcGePoint3d centerPoint() const { return point(15); }

protected:
    int kindNumber() const override { return 5; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// The diameter of a circle.
class AcDbDiametricDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbDiametricDimension);
    AcDbDiametricDimension() = default;

    AcGePoint3d chordPoint() const { return point(15); }
    AcGePoint3d farChordPoint() const { return geometry().definition; }
    double leaderLength() const { return geometry().length; }

protected:
    int kindNumber() const override { return 3; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// The radius of a circle.
class AcDbRadialDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRadialDimension);
    AcDbRadialDimension() = default;

    AcGePoint3d center() const { return geometry().definition; }
    AcGePoint3d chordPoint() const { return point(15); }
    double leaderLength() const { return geometry().length; }

protected:
    int kindNumber() const override { return 4; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// A coordinate of a point.
class AcDbOrdinateDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbOrdinateDimension);
    AcDbOrdinateDimension() = default;

    AcGePoint3d origin() const { return geometry().definition; }
    AcGePoint3d definingPoint() const { return point(13); }
    AcGePoint3d leaderEndPoint() const { return point(14); }
    bool isUsingXAxis() const { return geometry().usesX; }
    bool isUsingYAxis() const { return !geometry().usesX; }

protected:
    int kindNumber() const override { return 6; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// The length of an arc.
class AcDbArcDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbArcDimension);
    AcDbArcDimension() = default;

    AcGePoint3d arcPoint() const { return geometry().definition; }
    AcGePoint3d xLine1Point() const { return point(13); }
    AcGePoint3d xLine2Point() const { return point(14); }
    AcGePoint3d centerPoint() const { return point(15); }

protected:
    int kindNumber() const override { return -1; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};

/// A radius whose dimension line is jogged, as it begins at another centre than the circle's.
class AcDbRadialDimensionLarge : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRadialDimensionLarge);
    AcDbRadialDimensionLarge() = default;

    AcGePoint3d center() const { return geometry().definition; }
    AcGePoint3d overrideCenter() const { return point(13); }
    AcGePoint3d jogPoint() const { return point(14); }
    AcGePoint3d chordPoint() const { return point(15); }

protected:
    int kindNumber() const override { return -1; }
    void writeGeometry(headless::DxfOutput& out, const Geometry& geometry) const override;
};
