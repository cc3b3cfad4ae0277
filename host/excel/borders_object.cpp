// The borders of a range.
#include "excel/area_object.h"
#include "excel/border_lines.h"
#include "excel/color_values.h"
#include "excel/known_changes.h"

namespace headless::excel {
namespace {

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
            {kChangeLineStyle, static_cast<std::uint32_t>(style)});
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
            {kChangeLineWeight, static_cast<std::uint32_t>(weight)});
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
            constexpr std::uint32_t kSecondSide = 0x100;
            known.what += kSecondSide;
        }
    }
    void setLineColor(const Color& color) {
        changeLines(
            [&](BorderLine& line) {
                if (line.style == LineStyle::kNone) line.style = LineStyle::kThin;
                line.color = color;
            },
            {kChangeLineColor, color ? *color : ~std::uint64_t{0}});
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

IDispatch* makeBorders(const SheetPlace& place, const Area& area) {
    return newServed<BordersObject>(place, area);
}

} // namespace headless::excel
