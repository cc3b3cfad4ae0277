#include "db/dxf_filer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace headless {
namespace {

constexpr std::int16_t kSubclassMarker = 100;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

template <class Number, class... Format>
Number parsed(std::string_view text, Format... format) {
    // from_chars takes no plus sign.
    if (text.starts_with('+')) text.remove_prefix(1);
    Number value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, format...);
    return result.ec == std::errc() ? value : Number{};
}

} // namespace

std::string_view DxfTag::text() const {
    if (kind != Kind::kText || length == 0) return {};
    std::string_view value(bytes, length);
    while (!value.empty() && isBlank(value.front()))
        value.remove_prefix(1);
    while (!value.empty() && isBlank(value.back()))
        value.remove_suffix(1);
    return value;
}

double DxfTag::real() const {
    if (kind == Kind::kInteger) return static_cast<double>(whole);
    if (kind == Kind::kBinary) return 0.0;
    const double value = kind == Kind::kReal ? number : parsed<double>(text());
    return std::isfinite(value) ? value : 0.0;
}

std::int64_t DxfTag::integer() const {
    if (kind == Kind::kInteger) return whole;
    if (kind == Kind::kText) return parsed<std::int64_t>(text());
    constexpr double kTooLarge = 0x1p63;
    const double value = real();
    return std::abs(value) < kTooLarge ? static_cast<std::int64_t>(value) : 0;
}

std::uint64_t DxfTag::handle() const {
    constexpr int kHexadecimal = 16;
    return kind == Kind::kText ? parsed<std::uint64_t>(text(), kHexadecimal) : 0;
}

std::span<const DxfTag> DxfRecord::subclass(std::string_view name) const {
    const auto isMarker = [](const DxfTag& tag) { return tag.code == kSubclassMarker; };
    const auto marker = std::find_if(tags_.begin(), tags_.end(), [&](const DxfTag& tag) {
        return isMarker(tag) && tag.text() == name;
    });
    if (marker == tags_.end()) return tags_;
    return {marker + 1, std::find_if(marker + 1, tags_.end(), isMarker)};
}

const DxfTag* DxfRecord::find(int code) const {
    const auto found = std::find_if(tags_.begin(), tags_.end(),
                                    [code](const DxfTag& tag) { return tag.code == code; });
    return found == tags_.end() ? nullptr : &*found;
}

} // namespace headless
