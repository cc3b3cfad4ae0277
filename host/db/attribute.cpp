#include "db/attribute.h"

#include "db/dxf_filer.h"
#include "db/dxf_output.h"
#include "db/resbuf.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, "ATTDEF")
HEADLESS_DXF_DEFINE_MEMBERS(AcDbAttribute, AcDbText, "ATTRIB")

namespace {

std::wstring textOrEmpty(const ACHAR* text) { return text == nullptr ? L"" : text; }

int withFlag(int flags, int flag, bool on) { return on ? flags | flag : flags & ~flag; }

} // namespace

using headless::AttributeFlags;

AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text,
                                                 const ACHAR* tag, const ACHAR* prompt,
                                                 AcDbObjectId style)
    : AcDbText(position, text, style), tag_(textOrEmpty(tag)), prompt_(textOrEmpty(prompt)) {}

ACHAR* AcDbAttributeDefinition::tag() const { return acutNewString(look(tag_).c_str()); }

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
    return change(tag_, textOrEmpty(tag));
}

ACHAR* AcDbAttributeDefinition::prompt() const { return acutNewString(look(prompt_).c_str()); }

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
    return change(prompt_, textOrEmpty(prompt));
}

Acad::ErrorStatus AcDbAttributeDefinition::setInvisible(Adesk::Boolean on) {
    return change(flags_, withFlag(flags_, AttributeFlags::kInvisible, on));
}

Acad::ErrorStatus AcDbAttributeDefinition::setConstant(Adesk::Boolean on) {
    return change(flags_, withFlag(flags_, AttributeFlags::kConstant, on));
}

Acad::ErrorStatus AcDbAttributeDefinition::setVerifiable(Adesk::Boolean on) {
    return change(flags_, withFlag(flags_, AttributeFlags::kVerifiable, on));
}

Acad::ErrorStatus AcDbAttributeDefinition::setPreset(Adesk::Boolean on) {
    return change(flags_, withFlag(flags_, AttributeFlags::kPreset, on));
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    readText(*filer, filer->subclass("AcDbText"));
    for (const headless::DxfTag& tag : filer->subclass("AcDbAttributeDefinition")) {
        if (tag.code == 2) tag_ = filer->text(tag);
        if (tag.code == 3) prompt_ = filer->text(tag);
        if (tag.code == 70) flags_ = static_cast<int>(tag.integer());
        if (tag.code == 73) fieldLength_ = static_cast<Adesk::Int16>(tag.integer());
        if (tag.code == 74) readVerticalMode(tag);
    }
    return Acad::eOk;
}

AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                             AcDbObjectId style)
    : AcDbText(position, text, style), tag_(textOrEmpty(tag)) {}

ACHAR* AcDbAttribute::tag() const { return acutNewString(look(tag_).c_str()); }

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) { return change(tag_, textOrEmpty(tag)); }

Acad::ErrorStatus AcDbAttribute::setInvisible(Adesk::Boolean on) {
    return change(flags_, withFlag(flags_, AttributeFlags::kInvisible, on));
}

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                                       const AcGeMatrix3d& blockTransform) {
    if (definition == nullptr) return Acad::eNullObjectPointer;
    assertWriteEnabled();
    tag_ = definition->tagConst();
    fieldLength_ = definition->fieldLength();
    setInvisible(definition->isInvisible());
    takePlacingFrom(*definition);
    return transformBy(blockTransform);
}

Acad::ErrorStatus AcDbAttribute::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    readText(*filer, filer->subclass("AcDbText"));
    for (const headless::DxfTag& tag : filer->subclass("AcDbAttribute")) {
        if (tag.code == 2) tag_ = filer->text(tag);
        if (tag.code == 70) flags_ = static_cast<int>(tag.integer());
        if (tag.code == 73) fieldLength_ = static_cast<Adesk::Int16>(tag.integer());
        if (tag.code == 74) readVerticalMode(tag);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbAttributeDefinition::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {2, 3, 70, 73, 74};
    headless::DxfOutput& out = filer->output();
    writeText(out);
    out.subclass("AcDbAttributeDefinition", kCodes);
    out.text(3, prompt_);
    out.text(2, tag_);
    out.integer(70, flags_);
    out.integer(73, fieldLength_, 0);
    writeVerticalMode(out, 74);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbAttribute::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbEntity::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {2, 70, 73, 74};
    headless::DxfOutput& out = filer->output();
    writeText(out);
    out.subclass("AcDbAttribute", kCodes);
    out.text(2, tag_);
    out.integer(70, flags_);
    out.integer(73, fieldLength_, 0);
    writeVerticalMode(out, 74);
    return Acad::eOk;
}
