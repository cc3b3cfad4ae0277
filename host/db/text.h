// Single lines of text.
#pragma once

#include <array>
#include <span>
#include <string>

#include "db/entity.h"

class AcString;

/// A line of text in the plane of its normal. Its position is where the text begins on the base
/// line; with any other alignment than left and base line it is worked out from the alignment
/// point. Both points are in world coordinates, angles in the object coordinate system.
class AcDbText : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbText);

    AcDbText() = default;
    /// A height of 0 takes the style's.
    AcDbText(const AcGePoint3d& position, const ACHAR* text,
             AcDbObjectId style = AcDbObjectId::kNull, double height = 0.0, double rotation = 0.0);

    AcGePoint3d position() const { return look(position_); }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGePoint3d alignmentPoint() const { return look(alignment_); }
    /// eNotApplicable while the alignment is left and base line.
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    Adesk::Boolean isDefaultAlignment() const;
    AcDb::TextHorzMode horizontalMode() const { return look(horizontal_); }
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const { return look(vertical_); }
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    /// Works the position out from the alignment point; of fitted text also width or height.
    Acad::ErrorStatus adjustAlignment(const AcDbDatabase* db = nullptr);

    double height() const { return look(height_); }
    /// eInvalidInput unless positive.
    Acad::ErrorStatus setHeight(double height);
    double widthFactor() const { return look(widthFactor_); }
    /// eInvalidInput for 0.
    Acad::ErrorStatus setWidthFactor(double factor);
    double oblique() const { return look(oblique_); }
    Acad::ErrorStatus setOblique(double angle);
    double rotation() const { return look(rotation_); }
    Acad::ErrorStatus setRotation(double angle);
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    /// A copy, which the caller frees with acutDelString.
    ACHAR* textString() const;
    Acad::ErrorStatus textString(AcString& text) const;
    /// The text itself, good until the text changes.
    const ACHAR* textStringConst() const { return look(text_).c_str(); }
    Acad::ErrorStatus setTextString(const ACHAR* text);
    /// The fields' last results are the text's own; no field is ever pending.
    Acad::ErrorStatus convertFieldToText();
    bool hasFields() const { return false; }

    AcDbObjectId textStyle() const { return look(style_); }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style) { return change(style_, style); }
    Adesk::Boolean isMirroredInX() const { return look(mirroredInX_); }
    Acad::ErrorStatus mirrorInX(Adesk::Boolean on) { return change(mirroredInX_, on); }
    Adesk::Boolean isMirroredInY() const { return look(mirroredInY_); }
    Acad::ErrorStatus mirrorInY(Adesk::Boolean on) { return change(mirroredInY_, on); }

    /// The four corners of the text's own box in world coordinates: lower left, lower right, upper
    /// right, upper left.
    Acad::ErrorStatus getBoundingPoints(AcGePoint3dArray& corners) const;

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

    /// Reads the groups of single-line text but for the vertical mode, which attributes have
    /// elsewhere.
    void readText(AcDbDxfFiler& filer, std::span<const headless::DxfTag> tags);
    void readVerticalMode(const headless::DxfTag& tag);
    void writeText(headless::DxfOutput& out) const;
    void writeVerticalMode(headless::DxfOutput& out, int code) const;
    void takePlacingFrom(const AcDbText& other);

private:
    /// The text's own frame: x along the base line, y up, lengths in drawing units.
    struct Layout {
        AcGePoint3d origin; // Where the base line starts, in object coordinates.
        double rotation;
        double height;
        double width;
    };
    Layout layout() const;
    /// Width of the shown letters, in multiples of the text height.
    double lettersWidth() const;
    std::array<AcGePoint3d, 4> corners() const;
    bool aligned() const { return horizontal_ != AcDb::kTextLeft || vertical_ != AcDb::kTextBase; }
    bool stretched() const {
        return horizontal_ == AcDb::kTextAlign || horizontal_ == AcDb::kTextFit;
    }

    AcGePoint3d position_;
    AcGePoint3d alignment_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double height_ = 0.0;
    double widthFactor_ = 1.0;
    double oblique_ = 0.0;
    double rotation_ = 0.0;
    double thickness_ = 0.0;
    std::wstring text_;
    AcDbObjectId style_;
    AcDb::TextHorzMode horizontal_ = AcDb::kTextLeft;
    AcDb::TextVertMode vertical_ = AcDb::kTextBase;
    bool mirroredInX_ = false;
    bool mirroredInY_ = false;
};
