// Named coordinate systems, named views and the tiled viewports of model space.
#pragma once

#include "db/symbol_table.h"
#include "db/view.h"
#include "ge/point2d.h"
#include "ge/point3d.h"
#include "ge/vector3d.h"

namespace headless {
class DxfOutput;
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

    AcGePoint2d centerPoint() const { return look(view_.center); }
    Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center) {
        return change(view_.center, center);
    }
    double height() const { return look(view_.height); }
    Acad::ErrorStatus setHeight(double height) { return change(view_.height, height); }
    double width() const { return look(width_); }
    Acad::ErrorStatus setWidth(double width) { return change(width_, width); }
    AcGePoint3d target() const { return look(view_.target); }
    Acad::ErrorStatus setTarget(const AcGePoint3d& target) { return change(view_.target, target); }
    /// From the target to the eye.
    AcGeVector3d viewDirection() const { return look(view_.direction); }
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction) {
        return change(view_.direction, direction);
    }
    double viewTwist() const { return look(view_.twist); }
    Acad::ErrorStatus setViewTwist(double angle) { return change(view_.twist, angle); }
    double lensLength() const { return look(view_.lensLength); }
    Acad::ErrorStatus setLensLength(double length) { return change(view_.lensLength, length); }
    bool perspectiveEnabled() const { return look(view_).has(headless::kPerspectiveView); }
    Acad::ErrorStatus setPerspectiveEnabled(bool enabled) {
        return setMode(headless::kPerspectiveView, enabled);
    }

    /// Distances of the clipping planes from the target, positive towards the eye.
    double frontClipDistance() const { return look(view_.frontClip); }
    Acad::ErrorStatus setFrontClipDistance(double distance) {
        return change(view_.frontClip, distance);
    }
    double backClipDistance() const { return look(view_.backClip); }
    Acad::ErrorStatus setBackClipDistance(double distance) {
        return change(view_.backClip, distance);
    }
    bool frontClipEnabled() const { return look(view_).has(headless::kFrontClipOn); }
    Acad::ErrorStatus setFrontClipEnabled(bool enabled) {
        return setMode(headless::kFrontClipOn, enabled);
    }
    bool backClipEnabled() const { return look(view_).has(headless::kBackClipOn); }
    Acad::ErrorStatus setBackClipEnabled(bool enabled) {
        return setMode(headless::kBackClipOn, enabled);
    }
    /// True when the front plane goes through the eye, whatever its distance.
    bool frontClipAtEye() const { return !look(view_).has(headless::kFrontClipNotAtEye); }
    Acad::ErrorStatus setFrontClipAtEye(bool atEye) {
        return setMode(headless::kFrontClipNotAtEye, !atEye);
    }

    /// The view whether or not the record is open.
    const headless::View& viewOf() const { return view_; }
    Acad::ErrorStatus setView(const headless::View& view) { return change(view_, view); }

protected:
    AcDbAbstractViewTableRecord() = default;

    Acad::ErrorStatus setMode(headless::ViewMode bit, bool on) {
        assertWriteEnabled();
        view_.set(bit, on);
        return Acad::eOk;
    }
    /// Reads what views and viewports store under the same codes; false for other groups.
    void readLens(AcDbDxfFiler& filer, const char* marker);
    void writeLens(headless::DxfOutput& out) const;
    void writeMode(headless::DxfOutput& out) const;

    headless::View view_;
    double width_ = 1.0;
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
    /// The corners whether or not the record is open.
    const AcGePoint2d& lowerLeftOf() const { return lowerLeft_; }
    const AcGePoint2d& upperRightOf() const { return upperRight_; }
    bool ucsFollowMode() const { return look(view_).has(headless::kUcsFollowsView); }
    void setUcsFollowMode(bool follows) { setMode(headless::kUcsFollowsView, follows); }
    double snapAngle() const { return look(snapAngle_); }
    Acad::ErrorStatus setSnapAngle(double angle) { return change(snapAngle_, angle); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
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
