#include "excel/format_table.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace headless::excel {
namespace {

class Mixer {
public:
    void add(std::uint64_t value) { hash_ = (std::rotl(hash_, 5) ^ value) * 0x9E3779B97F4A7C15U; }
    /// By its length and its start: names and number formats that differ mostly do so there.
    void add(const std::string& text) {
        std::uint64_t start = 0;
        std::memcpy(&start, text.data(), std::min(text.size(), sizeof start));
        add(start ^ text.size() << 56);
    }
    void add(const Color& color) { add(color ? std::uint64_t{*color} : ~std::uint64_t{0}); }
    void add(const BorderLine& line) {
        add(static_cast<std::uint64_t>(line.style));
        add(line.color);
    }
    template <class... Flags>
    void addSmall(Flags... values) {
        std::uint64_t packed = 0;
        ((packed = packed << 8 | static_cast<std::uint8_t>(values)), ...);
        add(packed);
    }
    [[nodiscard]] std::size_t hash() const { return hash_ ^ hash_ >> 29; }

private:
    std::uint64_t hash_ = 0;
};

} // namespace

std::size_t FormatTable::Hash::operator()(const CellFormat* format) const noexcept {
    Mixer mixer;
    mixer.add(format->numberFormat);
    const Font& font = format->font;
    mixer.add(font.name);
    mixer.add(std::bit_cast<std::uint64_t>(font.size));
    mixer.addSmall(font.bold, font.italic, font.strikeout, font.underline, font.script,
                   format->fill.pattern, format->locked, format->formulaHidden);
    mixer.add(font.color);
    mixer.add(format->fill.color);
    mixer.add(format->fill.patternColor);
    const Borders& borders = format->borders;
    for (const BorderLine* line :
         {&borders.left, &borders.right, &borders.top, &borders.bottom, &borders.diagonal}) {
        mixer.add(*line);
    }
    const Alignment& alignment = format->alignment;
    mixer.addSmall(borders.diagonalUp, borders.diagonalDown, alignment.horizontal,
                   alignment.vertical, alignment.indent, alignment.rotation, alignment.wrap,
                   alignment.shrink);
    return mixer.hash();
}

FormatId FormatTable::add(const CellFormat& format) {
    const auto known = index_.find(&format);
    if (known != index_.end()) return known->second;
    formats_.push_back(format);
    const auto id = static_cast<FormatId>(formats_.size() - 1);
    index_.emplace(&formats_.back(), id);
    return id;
}

void FormatTable::setDefault(const CellFormat& format) {
    index_.clear();
    remembered_.fill({});
    formats_.assign(1, format);
    index_.emplace(&formats_.front(), kDefaultFormat);
}

} // namespace headless::excel
