// Dimensions. What they look like stands in an anonymous block that each refers to.
#pragma once

#include <optional>
#include <string>

#include "db/entity.h"

class AcDbDimension : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimension);

    /// The block that draws the dimension, null when there is none.
    AcDbObjectId dimBlockId() const { return look(block_); }
    Acad::ErrorStatus setDimBlockId(AcDbObjectId block) { return change(block_, block); }
    /// How far the block is moved from where it was drawn, in world coordinates.
    AcGePoint3d dimBlockPosition() const;
    Acad::ErrorStatus setDimBlockPosition(const AcGePoint3d& position);

    /// The text instead of the measurement: empty or "<>" for none; a copy, which the caller frees
    /// with acutDelString.
    ACHAR* dimensionText() const;
    Acad::ErrorStatus setDimensionText(const ACHAR* text);
    /// The measurement that the file states. eNotApplicable when it states none.
    Acad::ErrorStatus measurement(double& value) const;
    AcGePoint3d textPosition() const { return look(textPosition_); }
    double textRotation() const { return look(textRotation_); }
    double horizontalRotation() const { return look(horizontalRotation_); }
    AcDbObjectId dimensionStyle() const { return look(style_); }
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style) { return change(style_, style); }
    AcGeVector3d normal() const { return look(normal_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;

protected:
    AcDbDimension() = default;

    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool keepsExtents() const override { return false; }

private:
    AcDbObjectId block_;
    AcDbObjectId style_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGePoint3d blockPosition_; // In the object coordinate system, as files hold it.
    AcGePoint3d textPosition_;
    double textRotation_ = 0.0;
    double horizontalRotation_ = 0.0;
    std::optional<double> measurement_;
    std::wstring text_;
};

class AcDbAlignedDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbAlignedDimension);
    AcDbAlignedDimension() = default;
};

class AcDbRotatedDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRotatedDimension);
    AcDbRotatedDimension() = default;
};

class AcDb2LineAngularDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDb2LineAngularDimension);
    AcDb2LineAngularDimension() = default;
};

class AcDb3PointAngularDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDb3PointAngularDimension);
    AcDb3PointAngularDimension() = default;
};

class AcDbDiametricDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbDiametricDimension);
    AcDbDiametricDimension() = default;
};

class AcDbRadialDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRadialDimension);
    AcDbRadialDimension() = default;
};

class AcDbOrdinateDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbOrdinateDimension);
    AcDbOrdinateDimension() = default;
};

class AcDbArcDimension : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbArcDimension);
    AcDbArcDimension() = default;
};

class AcDbRadialDimensionLarge : public AcDbDimension {
public:
    ACRX_DECLARE_MEMBERS(AcDbRadialDimensionLarge);
    AcDbRadialDimensionLarge() = default;
};
