// The fill of a range.
#include "excel/area_object.h"
#include "excel/color_values.h"

namespace headless::excel {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

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

} // namespace

IDispatch* makeInterior(const SheetPlace& place, const Area& area) {
    return newServed<InteriorObject>(place, area);
}

} // namespace headless::excel
