#include "db/mtext.h"

#include <array>
#include <cmath>
#include <numbers>

#include "db/database.h"
#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "db/text.h"
#include "db/text_metrics.h"
#include "db/text_style_table.h"
#include "rx/ac_string.h"
#include "win/casing.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMText, AcDbEntity, "MTEXT")

using headless::Residence;
namespace field = headless::field;

namespace {

/// The run's letters; a fraction in one line, parted by a slash.
std::wstring plainText(const headless::MTextRun& run) {
    if (!run.isFraction()) return run.text;
    return run.text + (run.bar == L'^' ? L' ' : L'/') + run.lower;
}

/// The same as a single line shows it, which ends its strokes itself.
std::wstring singleLine(const headless::MTextRun& run) {
    std::wstring codes;
    if (run.format.underlined) codes += L"%%u";
    if (run.format.overlined) codes += L"%%o";
    if (run.format.struckThrough) codes += L"%%k";
    return codes + plainText(run);
}

/// A font file's own name: without folder, second font and the ending that may be left out.
std::wstring_view fontName(std::wstring_view file) {
    file = file.substr(0, file.find(L','));
    if (const auto folder = file.find_last_of(L"\\/"); folder != std::wstring_view::npos)
        file.remove_prefix(folder + 1);
    constexpr std::wstring_view kStrokes = L".shx";
    if (file.size() > kStrokes.size() &&
        headless::equalNoCase(file.substr(file.size() - kStrokes.size()), kStrokes))
        file.remove_suffix(kStrokes.size());
    return file;
}

/// True when a style asks for the font that letters are in.
bool hasFont(const headless::FontRequest& style, const headless::FontRequest& letters) {
    if (style == letters) return true;
    if (!headless::equalNoCase(style.typeface, letters.typeface)) return false;
    if (letters.typeface.empty())
        return headless::equalNoCase(fontName(style.file), fontName(letters.file));
    return style.bold == letters.bold && style.italic == letters.italic;
}

} // namespace

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    return changeNormal(direction_, direction);
}

double AcDbMText::rotation() const {
    const AcGeVector3d local = headless::ocsMatrix(look(normal_)).transpose() * direction_;
    return AcGeVector2d(local.x, local.y).angle();
}

Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    const AcGeVector3d local(std::cos(angle), std::sin(angle), 0.0);
    return change(direction_, headless::ocsMatrix(normal_) * local);
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    return height > 0.0 ? change(textHeight_, height) : Acad::eInvalidInput;
}

headless::MTextFormat AcDbMText::format() const {
    headless::MTextFormat format;
    format.height = textHeight_;
    format.font = headless::fontRequestOf(style_);
    if (const auto* const style = Residence::peek<AcDbTextStyleTableRecord>(style_)) {
        format.widthFactor = style->xScaleOf();
        format.oblique = style->obliquingOf();
    }
    return format;
}

headless::MTextLayout AcDbMText::layout() const {
    if (contents_.empty() || !(textHeight_ > 0.0)) return {};
    return headless::layOut(headless::parseMText(contents_, format()),
                            {width_, lineSpacing_, column(), textHeight_});
}

double AcDbMText::actualWidth() const {
    assertReadEnabled();
    return layout().width;
}

double AcDbMText::actualHeight() const {
    assertReadEnabled();
    return layout().height;
}

ACHAR* AcDbMText::contents() const { return acutNewString(look(contents_).c_str()); }

Acad::ErrorStatus AcDbMText::contents(AcString& contents) const {
    contents = look(contents_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setContents(const ACHAR* contents) {
    if (contents == nullptr) return Acad::eInvalidInput;
    return change(contents_, contents);
}

ACHAR* AcDbMText::text() const {
    return acutNewString(headless::plainMText(look(contents_)).c_str());
}

Acad::ErrorStatus AcDbMText::convertFieldToText() {
    assertWriteEnabled();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    plane = AcGePlane(look(location_), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbMText::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

double AcDbMText::column() const { return (attachment_ - 1) % 3 / 2.0; }
double AcDbMText::row() const { return std::floor((attachment_ - 1) / 3.0) / 2.0; }

AcGePoint3d AcDbMText::boxCorner(const headless::MTextLayout& layout) const {
    const AcGeVector3d up = normal_.crossProduct(direction_);
    return location_ - direction_ * (column() * layout.width) + up * (row() * layout.height);
}

void AcDbMText::subDescribe(headless::GeometrySink& sink) const {
    const headless::MTextLayout layout = this->layout();
    if (layout.height == 0.0) return;
    const AcGePoint3d top = boxCorner(layout);
    const AcGeVector3d along = direction_ * layout.width;
    const AcGeVector3d down = direction_.crossProduct(normal_) * layout.height;
    sink.text(std::array{top + down, top + down + along, top + along, top});
}

AcDbObjectId AcDbMText::styleWith(const headless::FontRequest& font) const {
    const AcDbDatabase* const db = style_.isNull() ? database() : style_.database();
    if (db == nullptr || hasFont(headless::fontRequestOf(style_), font)) return style_;
    for (const AcDbObjectId id :
         Residence::peek<AcDbTextStyleTable>(db->textStyleTableId())->recordIds()) {
        const auto* const style = Residence::peek<AcDbTextStyleTableRecord>(id);
        if (style == nullptr || style->isErased() || style->nameOf().empty()) continue;
        if (hasFont(style->fontRequest(), font)) return id;
    }
    return style_;
}

Acad::ErrorStatus AcDbMText::subExplode(headless::NewEntities& parts) const {
    const headless::MTextLayout layout = this->layout();
    const AcGePoint3d corner = boxCorner(layout);
    const AcGeVector3d up = normal_.crossProduct(direction_);
    const AcGeVector3d local = headless::ocsMatrix(normal_).transpose() * direction_;
    const double rotation = AcGeVector2d(local.x, local.y).angle();
    for (const headless::PlacedRun& placed : layout.runs) {
        if (plainText(placed.run).find_first_not_of(L' ') == std::wstring::npos) continue;
        const headless::MTextFormat& format = placed.run.format;
        auto& text = headless::addPart(parts, *this, std::make_unique<AcDbText>());
        text.setNormal(normal_);
        text.setPosition(corner + direction_ * placed.origin.x + up * placed.origin.y);
        text.setRotation(rotation);
        text.setHeight(format.height);
        text.setWidthFactor(format.widthFactor * format.tracking);
        text.setOblique(format.oblique);
        text.setTextStyle(styleWith(format.font));
        text.setTextString(singleLine(placed.run).c_str());
        if (format.color) text.setColor(AcCmColor(*format.color));
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& transform) {
    const AcGeVector3d along = transform * direction_;
    const AcGeVector3d up = transform * normal_.crossProduct(direction_);
    const AcGeVector3d normal = along.crossProduct(up);
    if (normal.isZeroLength()) return Acad::eDegenerateGeometry;
    location_.transformBy(transform);
    width_ *= along.length();
    textHeight_ *= normal.length() / along.length();
    direction_ = along.normal();
    normal_ = normal.normal();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(location_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    AcGeVector3d direction;
    double rotation = 0.0;
    bool turned = false; // The later of direction and rotation counts.
    const auto others = [&](const headless::DxfTag& tag) {
        if (tag.code == 1 || tag.code == 3) contents_ += filer->text(tag);
        if (tag.code == 11 || tag.code == 50) turned = tag.code == 50;
        if (tag.code == 71 && tag.integer() >= kTopLeft && tag.integer() <= kBottomRight)
            attachment_ = static_cast<AttachmentPoint>(tag.integer());
        return false;
    };
    field::read(*filer, filer->subclass("AcDbMText"), others,
                field::Symbol{7, AcDbTextStyleTableRecord::desc(), style_},
                field::Point{10, location_}, field::Point{11, direction},
                field::Real{40, textHeight_}, field::Real{41, width_},
                field::Real{44, lineSpacing_}, field::Angle{50, rotation},
                field::Integer{72, flow_}, field::Normal{normal_});
    if (turned)
        direction = headless::ocsMatrix(normal_) *
                    AcGeVector3d(std::cos(rotation), std::sin(rotation), 0.0);
    // A text without either runs along the world's x axis, whichever way its normal points.
    direction_ = direction.isZeroLength() ? AcGeVector3d::kXAxis : direction.normal();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {1,  3,  7,  10, 20, 30, 11,  21,  31,
                                              40, 41, 44, 50, 71, 72, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbMText", kCodes);
    out.point(10, location_);
    out.real(40, textHeight_);
    out.real(41, width_);
    out.integer(71, attachment_);
    out.integer(72, flow_);
    writeContents(out);
    out.symbol(7, style_);
    out.normal(normal_);
    // Either a direction or a rotation: the direction serves any normal.
    out.point(11, direction_);
    out.real(44, lineSpacing_, 1.0);
    return Acad::eOk;
}

void AcDbMText::writeContents(headless::DxfOutput& out) const {
    constexpr std::size_t kChunk = 250; // characters of each group but the last
    std::wstring_view left = contents_;
    for (; left.size() >= kChunk; left.remove_prefix(kChunk))
        out.text(3, left.substr(0, kChunk));
    out.text(1, left);
}

void AcDbMText::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    visit(style_, headless::ReferenceKind::kHardPointer);
}
