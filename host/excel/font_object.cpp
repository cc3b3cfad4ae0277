// The font of a range.
#include "excel/area_object.h"
#include "excel/color_values.h"
#include "excel/known_changes.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

struct FontStyleName {
    const wchar_t* name;
    bool bold;
    bool italic;
};
/// The first of each style is the one told.
constexpr FontStyleName kFontStyles[] = {
    {L"Regular", false, false},    {L"Bold", true, false},     {L"Italic", false, true},
    {L"Bold Italic", true, true},  {L"Normal", false, false},  {L"Oblique", false, true},
    {L"Bold Oblique", true, true}, {L"常规", false, false},    {L"加粗", true, false},
    {L"倾斜", false, true},        {L"加粗 倾斜", true, true}, {L"加粗倾斜", true, true},
    {L"粗体", true, false},        {L"斜体", false, true},     {L"", false, false},
};

class FontObject final : public AreaObject {
public:
    using AreaObject::AreaObject;

    OwnedVariant name() const {
        return common([](const CellFormat& f) { return fromUtf8(f.font.name); });
    }
    void setName(const VARIANT& value) {
        const std::string name = toUtf8(textOf(value));
        if (name.empty()) failToSet("Name");
        set([&](Font& font) { font.name = name; });
    }
    OwnedVariant size() const {
        return common([](const CellFormat& f) { return f.font.size; });
    }
    void setSize(const VARIANT& value) {
        const double size = realOf(value);
        if (!(size >= 1.0 && size <= 409.0)) failToSet("Size");
        set([&](Font& font) { font.size = size; });
    }
    OwnedVariant bold() const {
        return common([](const CellFormat& f) { return f.font.bold; });
    }
    void setBold(const VARIANT& value) {
        set([on = booleanOf(value)](Font& font) { font.bold = on; });
    }
    OwnedVariant italic() const {
        return common([](const CellFormat& f) { return f.font.italic; });
    }
    void setItalic(const VARIANT& value) {
        set([on = booleanOf(value)](Font& font) { font.italic = on; });
    }
    OwnedVariant strikethrough() const {
        return common([](const CellFormat& f) { return f.font.strikeout; });
    }
    void setStrikethrough(const VARIANT& value) {
        set([on = booleanOf(value)](Font& font) { font.strikeout = on; });
    }
    OwnedVariant superscript() const { return script(Script::kSuperscript); }
    void setSuperscript(const VARIANT& value) { setScript(value, Script::kSuperscript); }
    OwnedVariant subscript() const { return script(Script::kSubscript); }
    void setSubscript(const VARIANT& value) { setScript(value, Script::kSubscript); }
    OwnedVariant underline() const {
        return common([](const CellFormat& f) { return numberOf(f.font.underline); });
    }
    void setUnderline(const VARIANT& value) {
        // True and False are taken as well.
        const auto underline =
            value.vt == VT_BOOL
                ? std::optional(booleanOf(value) ? Underline::kSingle : Underline::kNone)
                : underlineOf(integerOf(value));
        if (!underline) failToSet("Underline");
        set([&](Font& font) { font.underline = *underline; });
    }
    OwnedVariant color() const {
        return common([](const CellFormat& f) { return shownColor(f.font.color, 0); });
    }
    void setColor(const VARIANT& value) {
        const Color color = colorOf(value, "Color");
        set([&](Font& font) { font.color = color; }, {kChangeFontColor, *color});
    }
    OwnedVariant colorIndex() const {
        return common([](const CellFormat& f) { return paletteIndex(f.font.color); });
    }
    void setColorIndex(const VARIANT& value) {
        set([color = indexedColorOf(value)](Font& font) { font.color = color; });
    }
    OwnedVariant fontStyle() const {
        return common([](const CellFormat& f) {
            for (const FontStyleName& style : kFontStyles) {
                if (style.bold == f.font.bold && style.italic == f.font.italic) {
                    return std::wstring(style.name);
                }
            }
            return std::wstring();
        });
    }
    void setFontStyle(const VARIANT& value) {
        const std::wstring name = textOf(value);
        for (const FontStyleName& style : kFontStyles) {
            if (!equalNoCase(style.name, name)) continue;
            set([&](Font& font) {
                font.bold = style.bold;
                font.italic = style.italic;
            });
            return;
        }
        failToSet("FontStyle");
    }

protected:
    const MemberTable& members() const override {
        using F = FontObject;
        static const MemberTable table{
            {110, L"Name", reads<&F::name>, writes<&F::setName>},
            {104, L"Size", reads<&F::size>, writes<&F::setSize>},
            {96, L"Bold", reads<&F::bold>, writes<&F::setBold>},
            {101, L"Italic", reads<&F::italic>, writes<&F::setItalic>},
            {177, L"FontStyle", reads<&F::fontStyle>, writes<&F::setFontStyle>},
            {106, L"Underline", reads<&F::underline>, writes<&F::setUnderline>},
            {105, L"Strikethrough", reads<&F::strikethrough>, writes<&F::setStrikethrough>},
            {178, L"Superscript", reads<&F::superscript>, writes<&F::setSuperscript>},
            {179, L"Subscript", reads<&F::subscript>, writes<&F::setSubscript>},
            {99, L"Color", reads<&F::color>, writes<&F::setColor>},
            {97, L"ColorIndex", reads<&F::colorIndex>, writes<&F::setColorIndex>},
        };
        return table;
    }

private:
    template <class Change>
    void set(Change changeFont, const FormatChange& known = {}) {
        change([&](CellFormat& format) { changeFont(format.font); }, known);
    }
    OwnedVariant script(Script wanted) const {
        return common([wanted](const CellFormat& f) { return f.font.script == wanted; });
    }
    void setScript(const VARIANT& value, Script wanted) {
        set([on = booleanOf(value), wanted](Font& font) {
            if (on) {
                font.script = wanted;
            } else if (font.script == wanted) {
                font.script = Script::kNormal;
            }
        });
    }
};

} // namespace

IDispatch* makeFont(const SheetPlace& place, const Area& area) {
    return newServed<FontObject>(place, area);
}

} // namespace headless::excel
