#include "db/mline_style.h"

#include <algorithm>
#include <cwchar>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/linetype_table.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMlineStyle, AcDbObject, "MLINESTYLE")

using headless::DxfTag;

namespace {

constexpr std::int64_t kFilled = 1;
constexpr std::int64_t kShowMiters = 2;
constexpr double kRadians = std::numbers::pi / 180.0;

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
        fillColor_.setColorIndex(static_cast<int>(tag.integer()));
        break;
    case 70:
        filled_ = (tag.integer() & kFilled) != 0;
        showMiters_ = (tag.integer() & kShowMiters) != 0;
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
        elements_.back().color.setColorIndex(static_cast<int>(tag.integer()));
        break;
    default:
        break;
    }
}
