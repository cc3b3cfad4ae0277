// Viewports of paper space: windows on a sheet through which model space is seen.
#pragma once

#include <vector>

#include "db/entity.h"
#include "db/id_array.h"
#include "db/view.h"

/// A rectangle of its paper space with a view of model space in it. The first one of each paper
/// space, number 1, is the sheet's own: it keeps which part of the sheet is seen.
class AcDbViewport : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewport);

    AcDbViewport() = default;

    /// The rectangle on the sheet.
    AcGePoint3d centerPoint() const { return look(centerPoint_); }
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& center) {
        return change(centerPoint_, center);
    }
    double width() const { return look(width_); }
    Acad::ErrorStatus setWidth(double width) { return change(width_, width); }
    double height() const { return look(height_); }
    Acad::ErrorStatus setHeight(double height) { return change(height_, height); }

    /// What is seen in it; centre and height in the view's own coordinates (DCS).
    AcGePoint2d viewCenter() const { return look(view_.center); }
    Acad::ErrorStatus setViewCenter(const AcGePoint2d& center) {
        return change(view_.center, center);
    }
    double viewHeight() const { return look(view_.height); }
    Acad::ErrorStatus setViewHeight(double height) { return change(view_.height, height); }
    AcGePoint3d viewTarget() const { return look(view_.target); }
    Acad::ErrorStatus setViewTarget(const AcGePoint3d& target) {
        return change(view_.target, target);
    }
    AcGeVector3d viewDirection() const { return look(view_.direction); }
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction) {
        return change(view_.direction, direction);
    }
    double twistAngle() const { return look(view_.twist); }
    Acad::ErrorStatus setTwistAngle(double angle) { return change(view_.twist, angle); }
    double lensLength() const { return look(view_.lensLength); }
    Acad::ErrorStatus setLensLength(double length) { return change(view_.lensLength, length); }
    double frontClipDistance() const { return look(view_.frontClip); }
    void setFrontClipDistance(double distance) { change(view_.frontClip, distance); }
    double backClipDistance() const { return look(view_.backClip); }
    void setBackClipDistance(double distance) { change(view_.backClip, distance); }
    bool isPerspectiveOn() const { return look(view_).has(headless::kPerspectiveView); }
    bool isFrontClipOn() const { return look(view_).has(headless::kFrontClipOn); }
    bool isBackClipOn() const { return look(view_).has(headless::kBackClipOn); }
    bool isFrontClipAtEyeOn() const { return !look(view_).has(headless::kFrontClipNotAtEye); }

    /// Sheet units per unit of model space.
    double customScale() const { return look(height_) / view_.height; }
    /// eInvalidInput unless above 0.
    Acad::ErrorStatus setCustomScale(double scale);

    bool isOn() const { return look(on_); }
    Acad::ErrorStatus setOn() { return change(on_, true); }
    Acad::ErrorStatus setOff() { return change(on_, false); }

    /// Layers that are frozen in this viewport alone. What is frozen already is passed over, and so
    /// is when thawing what is not. eInvalidInput, changing nothing, for an id of no layer.
    Acad::ErrorStatus freezeLayersInViewport(const AcDbObjectIdArray& layers);
    Acad::ErrorStatus thawLayersInViewport(const AcDbObjectIdArray& layers);
    Acad::ErrorStatus thawAllLayersInViewport();
    bool isLayerFrozenInViewport(const AcDbObjectId& layer) const;
    Acad::ErrorStatus getFrozenLayerList(AcDbObjectIdArray& layers) const;
    /// The entity that bounds the viewport instead of its rectangle; null for none.
    AcDbObjectId nonRectClipEntityId() const { return look(clipEntity_); }
    bool isNonRectClipOn() const { return !look(clipEntity_).isNull() && clipped_; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    // What is known of the viewport whether or not it is open.
    const headless::View& viewOf() const { return view_; }
    const AcGePoint3d& centerOf() const { return centerPoint_; }
    double widthOf() const { return width_; }
    double heightOf() const { return height_; }
    /// The number that its file gives it, 0 when the sheet was not shown then; -1 for one that was
    /// not read from a file.
    short fileNumber() const { return number_; }
    bool showsModel() const { return on_; }
    Acad::ErrorStatus setView(const headless::View& view) { return change(view_, view); }
    void setFileNumber(short number) { change(number_, number); }

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    void readModes(std::int64_t flags);

    AcGePoint3d centerPoint_;
    double width_ = 1.0;
    double height_ = 1.0;
    headless::View view_;
    std::vector<AcDbObjectId> frozenLayers_;
    AcDbObjectId clipEntity_;
    short number_ = -1;
    bool on_ = true;
    bool clipped_ = false;
};
