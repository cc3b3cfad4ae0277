// Texts that belong to block references, and their templates in blocks.
#pragma once

#include <string>

#include "db/text.h"

namespace headless {

/// The flags of attributes and their definitions, as in files.
struct AttributeFlags {
    static constexpr int kInvisible = 1;
    static constexpr int kConstant = 2;
    static constexpr int kVerifiable = 4;
    static constexpr int kPreset = 8;
};

} // namespace headless

/// The template of an attribute: stands in a block and is not drawn in its references unless it is
/// constant.
class AcDbAttributeDefinition : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition);

    AcDbAttributeDefinition() = default;
    AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                            const ACHAR* prompt, AcDbObjectId style = AcDbObjectId::kNull);

    // Copies are freed by the caller with acutDelString.
    ACHAR* tag() const;
    const ACHAR* tagConst() const { return look(tag_).c_str(); }
    Acad::ErrorStatus setTag(const ACHAR* tag);
    ACHAR* prompt() const;
    const ACHAR* promptConst() const { return look(prompt_).c_str(); }
    Acad::ErrorStatus setPrompt(const ACHAR* prompt);

    Adesk::Boolean isInvisible() const { return has(headless::AttributeFlags::kInvisible); }
    Acad::ErrorStatus setInvisible(Adesk::Boolean on);
    Adesk::Boolean isConstant() const { return has(headless::AttributeFlags::kConstant); }
    Acad::ErrorStatus setConstant(Adesk::Boolean on);
    Adesk::Boolean isVerifiable() const { return has(headless::AttributeFlags::kVerifiable); }
    Acad::ErrorStatus setVerifiable(Adesk::Boolean on);
    Adesk::Boolean isPreset() const { return has(headless::AttributeFlags::kPreset); }
    Acad::ErrorStatus setPreset(Adesk::Boolean on);
    Adesk::Int16 fieldLength() const { return look(fieldLength_); }
    Acad::ErrorStatus setFieldLength(Adesk::Int16 length) { return change(fieldLength_, length); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    /// Whether references draw the definition, asked without opening it.
    bool isDrawnInReferences() const { return (flags_ & headless::AttributeFlags::kConstant) != 0; }

private:
    bool has(int flag) const { return (look(flags_) & flag) != 0; }

    std::wstring tag_;
    std::wstring prompt_;
    int flags_ = 0;
    Adesk::Int16 fieldLength_ = 0;
};

/// A text that belongs to one block reference.
class AcDbAttribute : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttribute);

    AcDbAttribute() = default;
    AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                  AcDbObjectId style = AcDbObjectId::kNull);

    /// A copy, which the caller frees with acutDelString.
    ACHAR* tag() const;
    const ACHAR* tagConst() const { return look(tag_).c_str(); }
    Acad::ErrorStatus setTag(const ACHAR* tag);

    Adesk::Boolean isInvisible() const { return has(headless::AttributeFlags::kInvisible); }
    Acad::ErrorStatus setInvisible(Adesk::Boolean on);
    Adesk::Boolean isConstant() const { return has(headless::AttributeFlags::kConstant); }
    Adesk::Boolean isVerifiable() const { return has(headless::AttributeFlags::kVerifiable); }
    Adesk::Boolean isPreset() const { return has(headless::AttributeFlags::kPreset); }
    Adesk::Int16 fieldLength() const { return look(fieldLength_); }
    Acad::ErrorStatus setFieldLength(Adesk::Int16 length) { return change(fieldLength_, length); }

    /// Takes tag, style and placing from the definition, moved into place by the reference's block
    /// transform.
    Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                            const AcGeMatrix3d& blockTransform);

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    bool has(int flag) const { return (look(flags_) & flag) != 0; }

    std::wstring tag_;
    int flags_ = 0;
    Adesk::Int16 fieldLength_ = 0;
};
