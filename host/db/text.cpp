#include "db/text.h"

#include <cmath>
#include <numbers>

#include "db/dxf_output.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "db/resbuf.h"
#include "db/text_metrics.h"
#include "db/text_style_table.h"
#include "ge/angles.h"
#include "rx/ac_string.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbText, AcDbEntity, "TEXT")

namespace field = headless::field;

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style,
                   double height, double rotation)
    : position_(position), height_(height), rotation_(rotation),
      text_(text == nullptr ? L"" : text), style_(style) {}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
    return change(position_, position);
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    if (!aligned()) return Acad::eNotApplicable;
    return change(alignment_, point);
}

Adesk::Boolean AcDbText::isDefaultAlignment() const {
    assertReadEnabled();
    return !aligned();
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
    assertWriteEnabled();
    // The point that the text hangs on stays where it is when text is first aligned.
    if (!aligned()) alignment_ = position_;
    horizontal_ = mode;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
    assertWriteEnabled();
    if (!aligned()) alignment_ = position_;
    vertical_ = mode;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
    return height > 0.0 ? change(height_, height) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    return factor != 0.0 ? change(widthFactor_, factor) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setOblique(double angle) {
    return change(oblique_, headless::normalizedAngle(angle));
}

Acad::ErrorStatus AcDbText::setRotation(double angle) {
    return change(rotation_, headless::normalizedAngle(angle));
}

ACHAR* AcDbText::textString() const { return acutNewString(look(text_).c_str()); }

Acad::ErrorStatus AcDbText::textString(AcString& text) const {
    text = look(text_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
    if (text == nullptr) return Acad::eInvalidInput;
    return change(text_, text);
}

Acad::ErrorStatus AcDbText::convertFieldToText() {
    assertWriteEnabled();
    return Acad::eOk;
}

double AcDbText::lettersWidth() const {
    return headless::fontOfStyle(style_).width(headless::shownText(text_));
}

AcDbText::Layout AcDbText::layout() const {
    const double natural = lettersWidth() * height_ * widthFactor_;
    const AcGePoint3d position = headless::worldToOcs(position_, normal_);
    if (!aligned()) return {position, rotation_, height_, natural};

    const AcGePoint3d hook = headless::worldToOcs(alignment_, normal_);
    if (stretched()) {
        const AcGeVector2d along(hook.x - position.x, hook.y - position.y);
        const double width = along.length();
        const bool keepsHeight = horizontal_ == AcDb::kTextFit || natural == 0.0;
        return {position, along.angle(), keepsHeight ? height_ : height_ * width / natural, width};
    }

    double left = 0.0;
    double up = 0.0;
    if (horizontal_ == AcDb::kTextCenter || horizontal_ == AcDb::kTextMid) left = natural / 2.0;
    if (horizontal_ == AcDb::kTextRight) left = natural;
    if (vertical_ == AcDb::kTextTop) up = -height_;
    if (vertical_ == AcDb::kTextVertMid || horizontal_ == AcDb::kTextMid) up = -height_ / 2.0;
    if (vertical_ == AcDb::kTextBottom) up = height_ * headless::kTextDescent;
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis);
    return {hook + turn * AcGeVector3d(-left, up, 0.0), rotation_, height_, natural};
}

Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase* /*db*/) {
    assertWriteEnabled();
    if (!aligned()) return Acad::eOk;
    const Layout placed = layout();
    position_ = headless::ocsToWorld(placed.origin, normal_);
    rotation_ = placed.rotation;
    if (stretched()) {
        const double letters = lettersWidth();
        height_ = placed.height;
        if (letters > 0.0 && height_ > 0.0) widthFactor_ = placed.width / (letters * height_);
    }
    return Acad::eOk;
}

std::array<AcGePoint3d, 4> AcDbText::corners() const {
    const Layout placed = layout();
    AcGeMatrix3d toWorld = AcGeMatrix3d::rotation(placed.rotation, AcGeVector3d::kZAxis);
    toWorld.setTranslation(placed.origin.asVector());
    if (!headless::isWorldNormal(normal_)) toWorld = headless::ocsMatrix(normal_) * toWorld;

    const double width = mirroredInX_ ? -placed.width : placed.width;
    const double height = mirroredInY_ ? -placed.height : placed.height;
    const double lean = std::tan(oblique_) * placed.height;
    return {toWorld * AcGePoint3d(0.0, 0.0, 0.0), toWorld * AcGePoint3d(width, 0.0, 0.0),
            toWorld * AcGePoint3d(width + lean, height, 0.0),
            toWorld * AcGePoint3d(lean, height, 0.0)};
}

Acad::ErrorStatus AcDbText::getBoundingPoints(AcGePoint3dArray& corners) const {
    assertReadEnabled();
    corners.setLogicalLength(0);
    for (const AcGePoint3d& corner : this->corners())
        corners.append(corner);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(position_), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbText::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

void AcDbText::subDescribe(headless::GeometrySink& sink) const {
    if (!text_.empty()) sink.text(corners());
}

Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis);
    const AcGeVector3d along = flat.local() * (turn * AcGeVector3d::kXAxis);
    const AcGeVector3d up = flat.local() * (turn * AcGeVector3d(std::tan(oblique_), 1.0, 0.0));
    const double stretch = along.length();
    if (stretch == 0.0) return Acad::eDegenerateGeometry;
    const double rise = along.crossProduct(up).z / stretch;
    if (rise == 0.0) return Acad::eDegenerateGeometry;

    position_.transformBy(transform);
    alignment_.transformBy(transform);
    normal_ = flat.normal();
    rotation_ = AcGeVector2d(along.x, along.y).angle();
    oblique_ = headless::normalizedAngle(std::atan2(along.dotProduct(up) / stretch, rise));
    widthFactor_ *= stretch / rise;
    height_ *= rise;
    thickness_ *= flat.normalScale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(position_);
    if (aligned()) points.append(alignment_);
    return Acad::eOk;
}

void AcDbText::takePlacingFrom(const AcDbText& other) {
    position_ = other.position_;
    alignment_ = other.alignment_;
    normal_ = other.normal_;
    height_ = other.height_;
    widthFactor_ = other.widthFactor_;
    oblique_ = other.oblique_;
    rotation_ = other.rotation_;
    thickness_ = other.thickness_;
    style_ = other.style_;
    horizontal_ = other.horizontal_;
    vertical_ = other.vertical_;
    mirroredInX_ = other.mirroredInX_;
    mirroredInY_ = other.mirroredInY_;
}

void AcDbText::readText(AcDbDxfFiler& filer, std::span<const headless::DxfTag> tags) {
    const auto mode = [this](const headless::DxfTag& tag) {
        if (tag.code == 72 && tag.integer() >= 0 && tag.integer() <= AcDb::kTextFit)
            horizontal_ = static_cast<AcDb::TextHorzMode>(tag.integer());
        return tag.code == 72;
    };
    field::read(filer, tags, field::Text{1, text_},
                field::Symbol{7, AcDbTextStyleTableRecord::desc(), style_}, field::Normal{normal_},
                field::OcsPoint{10, position_, normal_}, field::OcsPoint{11, alignment_, normal_},
                field::Real{39, thickness_}, field::Real{40, height_},
                field::Real{41, widthFactor_}, field::Angle{50, rotation_},
                field::Angle{51, oblique_}, field::Bit{71, 2, mirroredInX_},
                field::Bit{71, 4, mirroredInY_}, mode);
}

void AcDbText::readVerticalMode(const headless::DxfTag& tag) {
    const std::int64_t mode = tag.integer();
    if (mode >= 0 && mode <= AcDb::kTextTop) vertical_ = static_cast<AcDb::TextVertMode>(mode);
}

Acad::ErrorStatus AcDbText::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    // Texts have their subclass marker twice, with the vertical mode behind the second.
    const auto tags = filer->record().all();
    readText(*filer, tags);
    for (const headless::DxfTag& tag : tags)
        if (tag.code == 73) readVerticalMode(tag);
    return Acad::eOk;
}

void AcDbText::writeText(headless::DxfOutput& out) const {
    static constexpr std::int16_t kCodes[] = {1,  7,  10, 20, 30, 11, 21,  31,  39,
                                              40, 41, 50, 51, 71, 72, 210, 220, 230};
    out.subclass("AcDbText", kCodes);
    out.real(39, thickness_, 0.0);
    out.ocsPoint(10, position_, normal_);
    out.real(40, height_);
    out.text(1, text_);
    out.angle(50, rotation_, 0.0);
    out.real(41, widthFactor_, 1.0);
    out.angle(51, oblique_, 0.0);
    out.symbol(7, style_);
    out.integer(71, (mirroredInX_ ? 2 : 0) | (mirroredInY_ ? 4 : 0), 0);
    out.integer(72, horizontal_, AcDb::kTextLeft);
    if (aligned()) out.ocsPoint(11, alignment_, normal_);
    out.normal(normal_);
}

void AcDbText::writeVerticalMode(headless::DxfOutput& out, int code) const {
    out.integer(code, vertical_, AcDb::kTextBase);
}

Acad::ErrorStatus AcDbText::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {73};
    headless::DxfOutput& out = filer->output();
    writeText(out);
    out.subclass("AcDbText", kCodes);
    writeVerticalMode(out, 73);
    return Acad::eOk;
}

void AcDbText::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    visit(style_, headless::ReferenceKind::kHardPointer);
}
