#include "db/mline_style.h"

#include <algorithm>
#include <cwchar>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/linetype_table.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMlineStyle, AcDbObject, "MLINESTYLE")

using headless::DxfTag;

namespace {

using Style = AcDbMlineStyle;
constexpr std::uint32_t kStates = Style::kFilled | Style::kShowMiters | Style::kStartSquareCap |
                                  Style::kStartInnerArcs | Style::kStartRoundCap |
                                  Style::kEndSquareCap | Style::kEndInnerArcs | Style::kEndRoundCap;
constexpr double kRadians = std::numbers::pi / 180.0;

/// Sets a colour to the index or the parts that a group holds; an index that no colour has changes
/// nothing, and where both stand the parts count.
void readColor(AcCmEntityColor& color, const DxfTag& tag) {
    const auto value = static_cast<Adesk::UInt32>(tag.integer());
    constexpr Adesk::UInt32 kPartsOfColor = 0xFFFFFF;
    if (tag.code == 420)
        color.setColor(Adesk::UInt32{AcCmEntityColor::kByColor} << 24 | (value & kPartsOfColor));
    else if (!color.isByColor())
        color.setColorIndex(static_cast<int>(value));
}

void writeColor(headless::DxfOutput& out, const AcCmEntityColor& color) {
    constexpr Adesk::UInt32 kPartsOfColor = 0xFFFFFF;
    out.integer(62, color.nearestIndex());
    if (color.isByColor() && out.since(headless::DrawingVersion::k2004))
        out.integer(420, color.color() & kPartsOfColor);
}

} // namespace

Acad::ErrorStatus AcDbMlineStyle::setName(const ACHAR* name) {
    const std::size_t length = name == nullptr ? 0 : std::wcslen(name);
    if (length == 0 || length > kMaxNameLength) return Acad::eInvalidInput;
    return change(name_, name);
}

Acad::ErrorStatus AcDbMlineStyle::setDescription(const ACHAR* description) {
    return description == nullptr ? Acad::eInvalidInput : change(description_, description);
}

Acad::ErrorStatus AcDbMlineStyle::addElement(int& index, double offset, const AcCmColor& color,
                                             AcDbObjectId linetype) {
    assertWriteEnabled();
    const auto place = std::find_if(elements_.begin(), elements_.end(),
                                    [&](const Element& other) { return other.offset < offset; });
    index = static_cast<int>(place - elements_.begin());
    elements_.insert(place, {offset, color.entityColor(), linetype});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::getElementAt(int index, double& offset, AcCmColor& color,
                                               AcDbObjectId& linetype) const {
    if (index < 0 || index >= numElements()) return Acad::eInvalidIndex;
    const Element& element = elements_[static_cast<std::size_t>(index)];
    offset = element.offset;
    color = element.color;
    linetype = element.linetype;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::removeElementAt(int index) {
    if (index < 0 || index >= numElements()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    elements_.erase(elements_.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMlineStyle::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbObject::dxfInFields(filer); status != Acad::eOk) return status;
    for (const DxfTag& tag : filer->subclass("AcDbMlineStyle")) {
        if (!elements_.empty() || tag.code == 49)
            readElementField(*filer, tag);
        else
            readField(*filer, tag);
    }
    return Acad::eOk;
}

/// The groups before the first element's offset.
void AcDbMlineStyle::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 2:
        name_ = filer.text(tag);
        break;
    case 3:
        description_ = filer.text(tag);
        break;
    case 51:
        startAngle_ = tag.real() * kRadians;
        break;
    case 52:
        endAngle_ = tag.real() * kRadians;
        break;
    case 62:
    case 420:
        readColor(fillColor_, tag);
        break;
    case 70:
        states_ = static_cast<std::uint32_t>(tag.integer()) & kStates;
        break;
    default:
        break;
    }
}

void AcDbMlineStyle::readElementField(AcDbDxfFiler& filer, const DxfTag& tag) {
    switch (tag.code) {
    case 6:
        elements_.back().linetype = filer.symbolId(AcDbLinetypeTableRecord::desc(), tag);
        break;
    case 49:
        elements_.push_back({tag.real(), {}, {}});
        break;
    case 62:
    case 420:
        readColor(elements_.back().color, tag);
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbMlineStyle::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbObject::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {2, 3, 6, 49, 51, 52, 62, 70, 71, 420};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbMlineStyle", kCodes);
    out.text(2, name_);
    out.flags(70, states_, kStates);
    out.text(3, description_);
    writeColor(out, fillColor_);
    out.angle(51, startAngle_);
    out.angle(52, endAngle_);
    writeElements(out);
    return Acad::eOk;
}

void AcDbMlineStyle::writeElements(headless::DxfOutput& out) const {
    out.integer(71, std::ssize(elements_));
    for (const Element& element : elements_) {
        out.real(49, element.offset);
        writeColor(out, element.color);
        if (element.linetype.isNull())
            out.text(6, L"BYLAYER");
        else
            out.symbol(6, element.linetype);
    }
}

void AcDbMlineStyle::forEachReference(const headless::ReferenceVisitor& visit) {
    for (Element& element : elements_)
        visit(element.linetype, headless::ReferenceKind::kHardPointer);
}
