#include "dxf/value_check.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "dxf/group_codes.h"

namespace headless {
namespace {

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// Up to four digits behind an optional minus, blanks before and behind: such a number cannot fail
/// to parse nor be out of range.
bool isSmallWhole(std::string_view text) {
    constexpr int kSafeDigits = 4;
    const char* at = text.data();
    const char* const last = at + text.size();
    while (at != last && *at == ' ')
        ++at;
    if (at != last && *at == '-') ++at;
    int digits = 0;
    while (at != last && isDigit(*at)) {
        ++at;
        ++digits;
    }
    while (at != last && *at == ' ')
        ++at;
    return at == last && digits > 0 && digits <= kSafeDigits;
}

void setReal(DxfTag& tag, double value) {
    tag.kind = DxfTag::Kind::kReal;
    tag.number = value;
}

void setWhole(DxfTag& tag, std::int64_t value) {
    tag.kind = DxfTag::Kind::kInteger;
    tag.whole = value;
}

enum class Parsed { kNumber, kMalformed, kOutOfRange };

Parsed parseReal(std::string_view text, double& value) {
    if (text.starts_with('+')) text.remove_prefix(1);
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value);
    if (text.empty() || end != last || error == std::errc::invalid_argument) {
        return Parsed::kMalformed;
    }
    // Numbers too small for a double are as good as 0.
    if (error == std::errc::result_out_of_range) {
        const bool tiny = text.find("e-") != std::string_view::npos ||
                          text.find("E-") != std::string_view::npos || text.starts_with("0.") ||
                          text.starts_with("-0.");
        value = 0.0;
        return tiny ? Parsed::kNumber : Parsed::kOutOfRange;
    }
    return std::isfinite(value) ? Parsed::kNumber : Parsed::kOutOfRange;
}

std::optional<std::string_view> checkReal(DxfTag& tag) {
    if (tag.kind == DxfTag::Kind::kReal) {
        if (std::isfinite(tag.number)) return std::nullopt;
        setReal(tag, 0.0);
        return "not a finite number, taken as 0";
    }
    double value = 0.0;
    const Parsed parsed = parseReal(tag.text(), value);
    setReal(tag, parsed == Parsed::kNumber ? value : 0.0);
    if (parsed == Parsed::kNumber) return std::nullopt;
    return parsed == Parsed::kMalformed ? "not a number, taken as 0"
                                        : "the number is out of range, taken as 0";
}

struct Limits {
    std::int64_t least;
    std::int64_t most;
};

/// Files write unsigned numbers as well as signed ones.
Limits limitsOf(DxfValue kind) {
    switch (kind) {
    case DxfValue::kInt16:
    case DxfValue::kBool:
        return {std::numeric_limits<std::int16_t>::min(),
                std::numeric_limits<std::uint16_t>::max()};
    case DxfValue::kInt32:
        return {std::numeric_limits<std::int32_t>::min(),
                std::numeric_limits<std::uint32_t>::max()};
    default:
        return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    }
}

std::optional<std::string_view> checkWhole(DxfTag& tag, DxfValue kind) {
    if (tag.kind == DxfTag::Kind::kInteger) return std::nullopt;
    if (isSmallWhole({tag.bytes, tag.length})) return std::nullopt;

    double value = 0.0;
    const Parsed parsed = parseReal(tag.text(), value);
    const Limits limits = limitsOf(kind);
    constexpr double kWholeDoubles = 9007199254740992.0;
    if (parsed == Parsed::kMalformed || value != std::floor(value)) {
        setWhole(tag, 0);
        return "not a whole number, taken as 0";
    }
    if (parsed == Parsed::kOutOfRange || value < static_cast<double>(limits.least) ||
        value > static_cast<double>(limits.most)) {
        setWhole(tag, 0);
        return "the number is out of range, taken as 0";
    }
    if (std::abs(value) < kWholeDoubles) setWhole(tag, static_cast<std::int64_t>(value));
    return std::nullopt;
}

} // namespace

std::optional<std::string_view> checkValue(DxfTag& tag) {
    switch (const DxfValue kind = valueOfGroup(tag.code)) {
    case DxfValue::kReal:
        return checkReal(tag);
    case DxfValue::kInt16:
    case DxfValue::kInt32:
    case DxfValue::kInt64:
    case DxfValue::kBool:
        return checkWhole(tag, kind);
    case DxfValue::kNone:
    case DxfValue::kText:
    case DxfValue::kChunk:
        break;
    }
    return std::nullopt;
}

} // namespace headless
