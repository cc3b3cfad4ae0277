// Named coordinate systems, named views and the tiled viewports of model space.
#pragma once

#include "db/symbol_table.h"
#include "ge/point2d.h"
#include "ge/point3d.h"
#include "ge/vector3d.h"

namespace headless {
struct DxfTag;
} // namespace headless

class AcDbUCSTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTableRecord);

    AcDbUCSTableRecord() = default;

    AcGePoint3d origin() const { return look(origin_); }
    void setOrigin(const AcGePoint3d& origin) { change(origin_, origin); }
    AcGeVector3d xAxis() const { return look(xAxis_); }
    void setXAxis(const AcGeVector3d& axis) { change(xAxis_, axis); }
    AcGeVector3d yAxis() const { return look(yAxis_); }
    void setYAxis(const AcGeVector3d& axis) { change(yAxis_, axis); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    AcGePoint3d origin_;
    AcGeVector3d xAxis_ = AcGeVector3d::kXAxis;
    AcGeVector3d yAxis_ = AcGeVector3d::kYAxis;
};

/// Which part of the drawing is seen, and from where. Centre, height and width are in the view's
/// own coordinates (DCS), angles in radians.
class AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord);

    AcGePoint2d centerPoint() const { return look(center_); }
    Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center) { return change(center_, center); }
    double height() const { return look(height_); }
    Acad::ErrorStatus setHeight(double height) { return change(height_, height); }
    double width() const { return look(width_); }
    Acad::ErrorStatus setWidth(double width) { return change(width_, width); }
    AcGePoint3d target() const { return look(target_); }
    Acad::ErrorStatus setTarget(const AcGePoint3d& target) { return change(target_, target); }
    /// From the target to the eye.
    AcGeVector3d viewDirection() const { return look(direction_); }
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction) {
        return change(direction_, direction);
    }
    double viewTwist() const { return look(twist_); }
    Acad::ErrorStatus setViewTwist(double angle) { return change(twist_, angle); }
    double lensLength() const { return look(lens_); }
    Acad::ErrorStatus setLensLength(double length) { return change(lens_, length); }
    bool perspectiveEnabled() const { return look(perspective_); }
    Acad::ErrorStatus setPerspectiveEnabled(bool enabled) { return change(perspective_, enabled); }

protected:
    AcDbAbstractViewTableRecord() = default;

    AcGePoint2d center_;
    AcGePoint3d target_;
    AcGeVector3d direction_ = AcGeVector3d::kZAxis;
    double height_ = 1.0;
    double width_ = 1.0;
    double twist_ = 0.0;
    double lens_ = 50.0;
    bool perspective_ = false;
};

class AcDbViewTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTableRecord);

    AcDbViewTableRecord() = default;

    bool isPaperspaceView() const { return look(paperSpace_); }
    Acad::ErrorStatus setIsPaperspaceView(bool paper) { return change(paperSpace_, paper); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    void readField(const headless::DxfTag& tag);

    bool paperSpace_ = false;
};

/// A rectangle of the screen with its view. Several records share the name *Active; the first of
/// them is the current one.
class AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord);

    AcDbViewportTableRecord() = default;

    /// Corners as fractions of the drawing area.
    AcGePoint2d lowerLeftCorner() const { return look(lowerLeft_); }
    Acad::ErrorStatus setLowerLeftCorner(const AcGePoint2d& point) {
        return change(lowerLeft_, point);
    }
    AcGePoint2d upperRightCorner() const { return look(upperRight_); }
    Acad::ErrorStatus setUpperRightCorner(const AcGePoint2d& point) {
        return change(upperRight_, point);
    }
    double snapAngle() const { return look(snapAngle_); }
    Acad::ErrorStatus setSnapAngle(double angle) { return change(snapAngle_, angle); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    bool readPoint(const headless::DxfTag& tag);
    void readField(const headless::DxfTag& tag);

    AcGePoint2d lowerLeft_;
    AcGePoint2d upperRight_{1.0, 1.0};
    double snapAngle_ = 0.0;
};

class AcDbUCSTableIterator : public headless::SymbolTableIteratorOf<AcDbUCSTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbUCSTable : public headless::SymbolTableOf<AcDbUCSTableRecord, AcDbUCSTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTable);
};

class AcDbViewTableIterator : public headless::SymbolTableIteratorOf<AcDbViewTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbViewTable : public headless::SymbolTableOf<AcDbViewTableRecord, AcDbViewTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTable);
};

class AcDbViewportTableIterator : public headless::SymbolTableIteratorOf<AcDbViewportTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbViewportTable
    : public headless::SymbolTableOf<AcDbViewportTableRecord, AcDbViewportTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTable);

protected:
    /// Viewports of one configuration share its name.
    Acad::ErrorStatus checkName(const AcDbSymbolTableRecord& record) const override;
};
