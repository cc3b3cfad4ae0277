// Pictures placed in drawings, and areas that cover what lies below them.
#pragma once

#include <vector>

#include "db/entity.h"
#include "ge/vector2d.h"

/// A picture of whole pixels, put in place by the vectors of one pixel and cut out by a boundary.
/// The picture itself is another object's, its definition.
class AcDbRasterImage : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbRasterImage);

    enum ClipBoundaryType { kInvalid, kRect, kPoly };
    enum ImageDisplayOpt { kShow = 1, kShowUnAligned = 2, kClip = 4, kTransparent = 8 };

    AcDbRasterImage() = default;

    AcDbObjectId imageDefId() const { return look(definition_); }
    Acad::ErrorStatus setImageDefId(AcDbObjectId definition) {
        return change(definition_, definition);
    }
    /// The lower left corner, and the sides of the whole picture, in world coordinates.
    void getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const;
    /// eInvalidInput for sides that do not span a parallelogram.
    Acad::ErrorStatus setOrientation(const AcGePoint3d& origin, const AcGeVector3d& u,
                                     const AcGeVector3d& v);
    /// Width and height in pixels.
    AcGeVector2d imageSize() const { return look(size_); }

    bool isSetDisplayOpt(ImageDisplayOpt option) const { return (look(display_) & option) != 0; }
    /// 0 to 100.
    Adesk::Int8 brightness() const { return look(brightness_); }
    Adesk::Int8 contrast() const { return look(contrast_); }
    Adesk::Int8 fade() const { return look(fade_); }

    bool isClipped() const { return look(clipped_); }
    /// True when the boundary cuts a hole rather than the rest away.
    bool isClipInverted() const { return look(inverted_); }
    ClipBoundaryType clipBoundaryType() const { return look(boundaryType_); }
    /// The boundary in pixels from the picture's upper left corner, the middle of whose pixel is
    /// the origin; y runs down. Two opposite corners for a rectangle.
    const std::vector<AcGePoint2d>& clipBoundary() const { return look(boundary_); }

    /// The outline of what is seen, in world coordinates: the boundary, or the whole picture.
    /// Whether or not the image is open.
    std::vector<AcGePoint3d> outline() const;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    /// The subclass marker of records.
    virtual const char* marker() const { return "AcDbRasterImage"; }

private:
    bool readField(const headless::DxfTag& tag);
    void writeBoundary(headless::DxfOutput& out) const;
    AcGePoint3d placeOf(const AcGePoint2d& pixel) const;

    AcGePoint3d origin_;
    AcGeVector3d u_ = AcGeVector3d::kXAxis; // of one pixel, as v_
    AcGeVector3d v_ = AcGeVector3d::kYAxis;
    AcGeVector2d size_{1.0, 1.0};
    AcDbObjectId definition_;
    std::vector<AcGePoint2d> boundary_;
    ClipBoundaryType boundaryType_ = kRect;
    int display_ = kShow | kShowUnAligned | kClip;
    Adesk::Int8 brightness_ = 50;
    Adesk::Int8 contrast_ = 50;
    Adesk::Int8 fade_ = 0;
    bool clipped_ = false;
    bool inverted_ = false;
};

/// An area in the colour of the background; a picture of one pixel without a definition.
class AcDbWipeout : public AcDbRasterImage {
public:
    ACRX_DECLARE_MEMBERS(AcDbWipeout);

    AcDbWipeout() = default;

protected:
    const char* marker() const override { return "AcDbWipeout"; }
};
