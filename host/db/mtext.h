// Paragraphs of text with inline formatting codes.
#pragma once

#include <string>

#include "db/entity.h"
#include "db/mtext_layout.h"

class AcString;

/// Text in the plane of its normal, broken into lines at its width. The location is where the box
/// of the text is attached, in world coordinates.
///
/// Taken apart it is single lines of text, a piece for each run of letters of one look in a line.
/// They have its height, width, lean, colour and strokes; letters that stand closer or further
/// apart become narrower or wider instead, so that a piece ends where the run did. A piece is in
/// the style of the drawing that has the run's font, and in the text's own where none has: no style
/// is made.
class AcDbMText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMText);

    enum AttachmentPoint {
        kTopLeft = 1,
        kTopCenter = 2,
        kTopRight = 3,
        kMiddleLeft = 4,
        kMiddleCenter = 5,
        kMiddleRight = 6,
        kBottomLeft = 7,
        kBottomCenter = 8,
        kBottomRight = 9
    };
    enum FlowDirection { kLtoR = 1, kTtoB = 3, kByStyle = 5 };

    AcDbMText() = default;

    AcGePoint3d location() const { return look(location_); }
    Acad::ErrorStatus setLocation(const AcGePoint3d& location) {
        return change(location_, location);
    }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }
    /// The direction of the lines in world coordinates, a unit vector.
    AcGeVector3d direction() const { return look(direction_); }
    /// eInvalidInput for a vector without length.
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    /// The direction as an angle in the object coordinate system.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);

    /// Where lines break; 0 for no breaking.
    double width() const { return look(width_); }
    Acad::ErrorStatus setWidth(double width) { return change(width_, width); }
    double textHeight() const { return look(textHeight_); }
    /// eInvalidInput unless positive.
    Acad::ErrorStatus setTextHeight(double height);
    double actualWidth() const;
    double actualHeight() const;
    AttachmentPoint attachment() const { return look(attachment_); }
    Acad::ErrorStatus setAttachment(AttachmentPoint point) { return change(attachment_, point); }
    FlowDirection flowDirection() const { return look(flow_); }
    Acad::ErrorStatus setFlowDirection(FlowDirection flow) { return change(flow_, flow); }
    double lineSpacingFactor() const { return look(lineSpacing_); }
    Acad::ErrorStatus setLineSpacingFactor(double factor) { return change(lineSpacing_, factor); }
    AcDbObjectId textStyle() const { return look(style_); }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style) { return change(style_, style); }

    /// The text with its codes; a copy, which the caller frees with acutDelString.
    ACHAR* contents() const;
    Acad::ErrorStatus contents(AcString& contents) const;
    Acad::ErrorStatus setContents(const ACHAR* contents);
    /// The text without its codes, paragraphs parted by line feeds; a copy as above.
    ACHAR* text() const;
    /// The fields' last results are the text's own; no field is ever pending.
    Acad::ErrorStatus convertFieldToText();
    bool hasFields() const { return false; }

    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    /// Where its letters stand, whether or not the text is open.
    headless::MTextLayout layout() const;
    /// The upper left corner of the box that the layout starts from, in world coordinates.
    AcGePoint3d boxCorner(const headless::MTextLayout& layout) const;
    /// The look of letters without inline codes.
    headless::MTextFormat format() const;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    /// Which column and row of the box the location is: 0 left or top, 0.5 middle, 1 right or
    /// bottom.
    double column() const;
    double row() const;
    /// The style whose font that is; the text's own where no style has it.
    AcDbObjectId styleWith(const headless::FontRequest& font) const;
    void writeContents(headless::DxfOutput& out) const;

    AcGePoint3d location_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGeVector3d direction_ = AcGeVector3d::kXAxis;
    double width_ = 0.0;
    double textHeight_ = 0.0;
    double lineSpacing_ = 1.0;
    std::wstring contents_;
    AcDbObjectId style_;
    AttachmentPoint attachment_ = kTopLeft;
    FlowDirection flow_ = kByStyle;
};
