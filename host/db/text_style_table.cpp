#include "db/text_style_table.h"

#include <numbers>

#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE")
ACRX_CONS_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable, 0)

using headless::DxfTag;

namespace {

// How records pack what they say of a font.
constexpr std::int64_t kItalic = 0x1000000;
constexpr std::int64_t kBold = 0x2000000;
constexpr std::int64_t kByte = 0xFF;

} // namespace

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(ACHAR*& name) const {
    name = acutNewString(look(file_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(const ACHAR*& name) const {
    name = look(file_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
    if (name == nullptr) return Acad::eInvalidInput;
    typeface_.clear();
    return change(file_, name);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(ACHAR*& name) const {
    name = acutNewString(look(bigFont_).c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(const ACHAR*& name) const {
    name = look(bigFont_).c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
    return name == nullptr ? Acad::eInvalidInput : change(bigFont_, name);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::font(ACHAR*& typeface, bool& bold, bool& italic,
                                                 int& charset, int& pitchAndFamily) const {
    typeface = acutNewString(look(typeface_).c_str());
    bold = bold_;
    italic = italic_;
    charset = charset_;
    pitchAndFamily = pitchAndFamily_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFont(const ACHAR* typeface, bool bold, bool italic,
                                                    int charset, int pitchAndFamily) {
    if (typeface == nullptr) return Acad::eInvalidInput;
    assertWriteEnabled();
    typeface_ = typeface;
    bold_ = bold;
    italic_ = italic;
    charset_ = charset;
    pitchAndFamily_ = pitchAndFamily;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    return size >= 0.0 ? change(textSize_, size) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setPriorSize(double size) {
    return size > 0.0 ? change(priorSize_, size) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    return scale > 0.0 ? change(xScale_, scale) : Acad::eInvalidInput;
}

void AcDbTextStyleTableRecord::readFont(std::wstring typeface, std::int64_t packedFlags) {
    typeface_ = std::move(typeface);
    bold_ = (packedFlags & kBold) != 0;
    italic_ = (packedFlags & kItalic) != 0;
    charset_ = static_cast<int>(packedFlags >> 8 & kByte);
    pitchAndFamily_ = static_cast<int>(packedFlags & kByte);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbSymbolTableRecord::dxfInFields(filer); status != Acad::eOk)
        return status;
    for (const DxfTag& tag : filer->subclass("AcDbTextStyleTableRecord"))
        readField(*filer, tag);
    return Acad::eOk;
}

void AcDbTextStyleTableRecord::readField(AcDbDxfFiler& filer, const DxfTag& tag) {
    constexpr double kRadians = std::numbers::pi / 180.0;
    switch (tag.code) {
    case 3:
        file_ = filer.text(tag);
        break;
    case 4:
        bigFont_ = filer.text(tag);
        break;
    case 40:
        textSize_ = tag.real();
        break;
    case 41:
        if (tag.real() > 0.0)
            xScale_ = tag.real();
        else
            filer.report(tag, "a width factor that is not above 0; taken as 1");
        break;
    case 42:
        priorSize_ = tag.real();
        break;
    case 50:
        obliquing_ = tag.real() * kRadians;
        break;
    case 70:
        shapeFile_ = (tag.integer() & 1) != 0;
        vertical_ = (tag.integer() & 4) != 0;
        break;
    case 71:
        flagBits_ = static_cast<Adesk::UInt8>(tag.integer() & 6);
        break;
    default:
        break;
    }
}

Acad::ErrorStatus AcDbTextStyleTable::checkName(const AcDbSymbolTableRecord& record) const {
    const auto& style = static_cast<const AcDbTextStyleTableRecord&>(record);
    return style.isShapeFile() ? Acad::eOk : AcDbSymbolTable::checkName(record);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbSymbolTableRecord::dxfOutFields(filer); status != Acad::eOk)
        return status;
    static constexpr std::int16_t kCodes[] = {2, 3, 4, 40, 41, 42, 50, 70, 71};
    headless::DxfOutput& out = filer->output();
    beginFields(*filer, "AcDbTextStyleTableRecord", kCodes);
    out.flags(70, (shapeFile_ ? 1U : 0U) | (vertical_ ? 4U : 0U), 5);
    out.real(40, textSize_);
    out.real(41, xScale_);
    out.angle(50, obliquing_);
    out.flags(71, flagBits_, 6);
    out.real(42, priorSize_);
    out.text(3, file_);
    out.text(4, bigFont_);
    if (out.since(headless::DrawingVersion::kR14)) writeFont(out);
    return Acad::eOk;
}

void AcDbTextStyleTableRecord::writeFont(headless::DxfOutput& out) const {
    out.application(L"ACAD");
    if (typeface_.empty()) return;
    out.text(1000, typeface_);
    out.integer(1071, (bold_ ? kBold : 0) | (italic_ ? kItalic : 0) | (charset_ & kByte) << 8 |
                          (pitchAndFamily_ & kByte));
}
