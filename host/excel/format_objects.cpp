// Font, interior and borders of ranges.
#include <array>
#include <span>
#include <utility>
#include <vector>

#include "excel/area_object.h"
#include "excel/format_names.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

double shownColor(const Color& color, std::uint32_t automatic) {
    return static_cast<double>(color.value_or(automatic));
}

Color colorOf(const VARIANT& value, const char* property) {
    const double color = realOf(value);
    if (!(color >= 0.0 && color <= 0xFFFFFF)) failToSet(property);
    return static_cast<std::uint32_t>(color);
}

/// A colour of the palette; none for automatic.
Color indexedColorOf(const VARIANT& value) {
    const LONG index = integerOf(value);
    if (index == kXlAutomatic || index == kXlNone || index == 0) return std::nullopt;
    const Color color = paletteColor(index);
    if (!color) failToSet("ColorIndex");
    return color;
}

// Changes that formats remember. Those of lines leave room for the number of the line.
constexpr std::uint32_t kFontColor = 0x1000;
constexpr std::uint32_t kLineStyle = 0x2000;
constexpr std::uint32_t kLineWeight = 0x3000;
constexpr std::uint32_t kLineColor = 0x4000;
constexpr std::uint32_t kSecondSide = 0x100;

constexpr std::uint32_t kWhite = 0xFFFFFF;

// --- Font ---

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
        set([&](Font& font) { font.color = color; }, {kFontColor, *color});
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

// --- Interior ---

class InteriorObject final : public AreaObject {
public:
    using AreaObject::AreaObject;

    OwnedVariant pattern() const {
        return common([](const CellFormat& f) { return numberOf(f.fill.pattern); });
    }
    void setPattern(const VARIANT& value) {
        const auto pattern = patternOf(integerOf(value));
        if (!pattern) failToSet("Pattern");
        change([&](CellFormat& format) {
            format.fill.pattern = *pattern;
            if (*pattern == Pattern::kNone) format.fill = {};
        });
    }
    OwnedVariant color() const {
        return common([](const CellFormat& f) { return shownColor(f.fill.color, kWhite); });
    }
    void setColor(const VARIANT& value) { setGround(colorOf(value, "Color")); }
    OwnedVariant colorIndex() const {
        return common([](const CellFormat& f) {
            return f.fill.pattern == Pattern::kNone ? kXlNone : paletteIndex(f.fill.color);
        });
    }
    void setColorIndex(const VARIANT& value) {
        const Color color = indexedColorOf(value);
        if (color) return setGround(color);
        change([](CellFormat& format) { format.fill = {}; });
    }
    OwnedVariant patternColor() const {
        return common([](const CellFormat& f) { return shownColor(f.fill.patternColor, 0); });
    }
    void setPatternColor(const VARIANT& value) {
        change([color = colorOf(value, "PatternColor")](CellFormat& format) {
            format.fill.patternColor = color;
        });
    }

protected:
    const MemberTable& members() const override {
        using I = InteriorObject;
        static const MemberTable table{
            {95, L"Pattern", reads<&I::pattern>, writes<&I::setPattern>},
            {99, L"Color", reads<&I::color>, writes<&I::setColor>},
            {97, L"ColorIndex", reads<&I::colorIndex>, writes<&I::setColorIndex>},
            {100, L"PatternColor", reads<&I::patternColor>, writes<&I::setPatternColor>},
        };
        return table;
    }

private:
    void setGround(const Color& color) {
        change([&](CellFormat& format) {
            if (format.fill.pattern == Pattern::kNone) format.fill.pattern = Pattern::kSolid;
            format.fill.color = color;
        });
    }
};

// --- Borders ---

using Line = BorderLine Borders::*;

/// Some cells of the range, and which lines of each.
struct LinesOfCells {
    Area cells;
    std::span<const Line> lines;
};

enum BorderIndex : LONG {
    kDiagonalDown = 5,
    kDiagonalUp = 6,
    kEdgeLeft = 7,
    kEdgeTop = 8,
    kEdgeBottom = 9,
    kEdgeRight = 10,
    kInsideVertical = 11,
    kInsideHorizontal = 12
};

constexpr std::array<Line, 4> kEdges = {&Borders::left, &Borders::right, &Borders::top,
                                        &Borders::bottom};
constexpr std::array<Line, 1> kDiagonal = {&Borders::diagonal};
constexpr std::span<const Line> kLeft(&kEdges[0], 1);
constexpr std::span<const Line> kRight(&kEdges[1], 1);
constexpr std::span<const Line> kTop(&kEdges[2], 1);
constexpr std::span<const Line> kBottom(&kEdges[3], 1);

/// The lines that an index names; a missing one is all that lie along edges of cells.
std::vector<LinesOfCells> linesOf(const Area& area, LONG index) {
    switch (index) {
    case 1: // The older names of edges mean every cell's.
        return {{area, kLeft}};
    case 2:
        return {{area, kRight}};
    case 3:
        return {{area, kTop}};
    case 4:
        return {{area, kBottom}};
    case kDiagonalDown:
    case kDiagonalUp:
        return {{area, kDiagonal}};
    case kEdgeLeft:
        return {{{area.top, area.left, area.bottom, area.left}, kLeft}};
    case kEdgeTop:
        return {{{area.top, area.left, area.top, area.right}, kTop}};
    case kEdgeBottom:
        return {{{area.bottom, area.left, area.bottom, area.right}, kBottom}};
    case kEdgeRight:
        return {{{area.top, area.right, area.bottom, area.right}, kRight}};
    case kInsideVertical:
        if (area.columns() == 1) return {};
        return {{{area.top, area.left, area.bottom, area.right - 1}, kRight},
                {{area.top, area.left + 1, area.bottom, area.right}, kLeft}};
    case kInsideHorizontal:
        if (area.rows() == 1) return {};
        return {{{area.top, area.left, area.bottom - 1, area.right}, kBottom},
                {{area.top + 1, area.left, area.bottom, area.right}, kTop}};
    default:
        return {{area, kEdges}};
    }
}

constexpr LONG kAllEdges = 0;

/// One line of a range, or all lines along edges.
class BorderObject : public AreaObject {
public:
    BorderObject(const SheetPlace& place, const Area& area, LONG index = kAllEdges)
        : AreaObject(place, area), index_(index) {}

    OwnedVariant lineStyle() const {
        return commonLine([](const BorderLine& line) { return kindOf(line.style).style; });
    }
    void setLineStyle(const VARIANT& value) {
        const LONG style = integerOf(value);
        if (!styleOf({style, 2})) failToSet("LineStyle");
        changeLines(
            [&](BorderLine& line) {
                const LONG weight = line.style == LineStyle::kNone ? 2 : kindOf(line.style).weight;
                line.style = *styleOf({style, weight});
                if (line.style == LineStyle::kNone) line.color.reset();
            },
            {kLineStyle, static_cast<std::uint32_t>(style)});
    }
    OwnedVariant weight() const {
        return commonLine([](const BorderLine& line) { return kindOf(line.style).weight; });
    }
    void setWeight(const VARIANT& value) {
        const LONG weight = integerOf(value);
        if (weight != 1 && weight != 2 && weight != 4 && weight != -4138) failToSet("Weight");
        changeLines(
            [&](BorderLine& line) {
                const LONG style = line.style == LineStyle::kNone ? 1 : kindOf(line.style).style;
                line.style = *styleOf({style, weight});
            },
            {kLineWeight, static_cast<std::uint32_t>(weight)});
    }
    OwnedVariant color() const {
        return commonLine([](const BorderLine& line) { return shownColor(line.color, 0); });
    }
    void setColor(const VARIANT& value) { setLineColor(colorOf(value, "Color")); }
    OwnedVariant colorIndex() const {
        return commonLine([](const BorderLine& line) {
            return line.style == LineStyle::kNone ? kXlNone : paletteIndex(line.color);
        });
    }
    void setColorIndex(const VARIANT& value) { setLineColor(indexedColorOf(value)); }

protected:
    const MemberTable& members() const override {
        using B = BorderObject;
        static const MemberTable table{
            {119, L"LineStyle", reads<&B::lineStyle>, writes<&B::setLineStyle>},
            {120, L"Weight", reads<&B::weight>, writes<&B::setWeight>},
            {99, L"Color", reads<&B::color>, writes<&B::setColor>},
            {97, L"ColorIndex", reads<&B::colorIndex>, writes<&B::setColorIndex>},
        };
        return table;
    }

private:
    /// @param known  the change of one line, which lines does not matter.
    template <class Change>
    void changeLines(Change changeLine, FormatChange known) {
        place_.check();
        known.what += static_cast<std::uint32_t>(index_);
        for (const LinesOfCells& some : linesOf(area_, index_)) {
            const auto change = [&](CellFormat& format) {
                for (const Line line : some.lines)
                    changeLine(format.borders.*line);
                const bool drawn = format.borders.diagonal.style != LineStyle::kNone;
                if (index_ == kDiagonalDown) format.borders.diagonalDown = drawn;
                if (index_ == kDiagonalUp) format.borders.diagonalUp = drawn;
            };
            changeFormat(place_, some.cells, change, known);
            // The two sides of an inner line are two changes.
            known.what += kSecondSide;
        }
    }
    void setLineColor(const Color& color) {
        changeLines(
            [&](BorderLine& line) {
                if (line.style == LineStyle::kNone) line.style = LineStyle::kThin;
                line.color = color;
            },
            {kLineColor, color ? *color : ~std::uint64_t{0}});
    }
    template <class Read>
    OwnedVariant commonLine(Read read) const {
        place_.check();
        std::optional<decltype(read(BorderLine{}))> found;
        for (const LinesOfCells& some : linesOf(area_, index_)) {
            for (const Line line : some.lines) {
                const auto value = commonFormat(place_, some.cells, [&](const CellFormat& format) {
                    return read(format.borders.*line);
                });
                if (!value || (found && *found != *value)) return OwnedVariant::null();
                found = value;
            }
        }
        return found ? OwnedVariant(*found) : OwnedVariant::null();
    }

    LONG index_;
};

class BordersObject final : public BorderObject {
public:
    using BorderObject::BorderObject;

    IDispatch* item(const CallArguments& arguments) const {
        const LONG index = arguments.integer(0, 0);
        if (index < 1 || index > kInsideHorizontal) fail("there is no such border");
        return newServed<BorderObject>(place_, area_, index);
    }
    LONG count() const { return 6; }

protected:
    const MemberTable& members() const override {
        using B = BordersObject;
        using Lines = BorderObject;
        static const MemberTable table{
            {170, L"Item", reads<&B::item>, nullptr, calls<&B::item>},
            {0, L"_Default", reads<&B::item>, nullptr, calls<&B::item>},
            {118, L"Count", reads<&B::count>},
            {119, L"LineStyle", reads<&Lines::lineStyle>, writes<&Lines::setLineStyle>},
            {120, L"Weight", reads<&Lines::weight>, writes<&Lines::setWeight>},
            {99, L"Color", reads<&Lines::color>, writes<&Lines::setColor>},
            {97, L"ColorIndex", reads<&Lines::colorIndex>, writes<&Lines::setColorIndex>},
        };
        return table;
    }
};

} // namespace

void checkSize(const Area& area) {
    constexpr std::size_t kMostCells = 2'000'000;
    if (area.cells() > kMostCells) fail("the range is too large for this");
}

IDispatch* makeFont(const SheetPlace& place, const Area& area) {
    return newServed<FontObject>(place, area);
}

IDispatch* makeInterior(const SheetPlace& place, const Area& area) {
    return newServed<InteriorObject>(place, area);
}

IDispatch* makeBorders(const SheetPlace& place, const Area& area) {
    return newServed<BordersObject>(place, area);
}

} // namespace headless::excel
