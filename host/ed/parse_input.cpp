#include "ed/parse_input.h"

#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string>

namespace headless {
namespace {

/// The text's characters as bytes for std::from_chars; anything beyond ASCII makes it unreadable.
std::string asciiOf(std::wstring_view text) {
    std::string result;
    for (const wchar_t c : text)
        result += c > 0 && c < 0x80 ? static_cast<char>(c) : '?';
    return result;
}

template <class Number>
std::optional<Number> parseWhole(std::wstring_view text) {
    std::string ascii = asciiOf(text);
    // from_chars knows no plus sign; "+-1" stays unreadable.
    if (ascii.size() > 1 && ascii[0] == '+' && ascii[1] != '-') ascii.erase(0, 1);
    Number value{};
    const char* end = ascii.data() + ascii.size();
    const auto [stop, error] = std::from_chars(ascii.data(), end, value);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

std::optional<double> parseFraction(std::wstring_view text) {
    const std::size_t slash = text.find(L'/');
    const std::size_t dash = text.substr(0, slash).find_last_of(L'-');
    const bool mixed = dash != std::wstring_view::npos && dash > 0;
    const std::size_t numeratorAt = mixed ? dash + 1 : 0;
    const auto numerator = parseWhole<int>(text.substr(numeratorAt, slash - numeratorAt));
    const auto denominator = parseWhole<int>(text.substr(slash + 1));
    if (!numerator || !denominator || *denominator <= 0) return std::nullopt;
    const double fraction = static_cast<double>(*numerator) / *denominator;
    if (!mixed) return fraction;

    const auto whole = parseWhole<int>(text.substr(0, dash));
    if (!whole) return std::nullopt;
    return text.front() == L'-' ? *whole - fraction : *whole + fraction;
}

/// "distance<degrees" in a plane at z.
std::optional<AcGeVector3d> parsePolar(std::wstring_view text, std::size_t bracket, double z) {
    const auto distance = parseReal(text.substr(0, bracket));
    const auto degrees = parseReal(text.substr(bracket + 1));
    if (!distance || !degrees) return std::nullopt;
    const double angle = *degrees * std::numbers::pi / 180.0;
    return AcGeVector3d(*distance * std::cos(angle), *distance * std::sin(angle), z);
}

/// Two or three numbers separated by commas.
/// @param missingZ  the third when only two stand there.
std::optional<AcGeVector3d> parseCoordinates(std::wstring_view text, double missingZ) {
    std::array<double, 3> numbers = {0.0, 0.0, missingZ};
    std::size_t count = 0;
    for (std::size_t start = 0; start <= text.size(); ++count) {
        if (count == numbers.size()) return std::nullopt;
        const std::size_t comma = std::min(text.find(L',', start), text.size());
        const auto number = parseReal(text.substr(start, comma - start));
        if (!number) return std::nullopt;
        numbers[count] = *number;
        start = comma + 1;
    }
    if (count < 2) return std::nullopt;
    return AcGeVector3d(numbers[0], numbers[1], numbers[2]);
}

} // namespace

std::optional<int> parseInteger(std::wstring_view text) {
    const auto value = parseWhole<int>(text);
    if (!value || *value < -32768 || *value > 32767) return std::nullopt;
    return value;
}

std::optional<double> parseReal(std::wstring_view text) {
    if (text.find(L'/') != std::wstring_view::npos) return parseFraction(text);
    const auto value = parseWhole<double>(text);
    if (!value || !std::isfinite(*value)) return std::nullopt; // from_chars reads "inf" and "nan"
    return value;
}

std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const PointFrame& frame) {
    const bool relative = !text.empty() && text.front() == L'@';
    if (relative) text.remove_prefix(1);
    if (relative && text.empty()) return frame.last;

    const bool ofWorld = text.starts_with(L'*');
    if (ofWorld) text.remove_prefix(1);

    const std::size_t bracket = text.find(L'<');
    const bool polar = bracket != std::wstring_view::npos;
    const double missingZ = relative ? 0.0 : frame.elevation;
    const auto offset =
        polar ? parsePolar(text, bracket, missingZ) : parseCoordinates(text, missingZ);
    if (!offset) return std::nullopt;
    const AcGeMatrix3d& toUser = ofWorld ? frame.worldToUser : AcGeMatrix3d::kIdentity;
    if (relative) return frame.last + toUser * *offset;
    return toUser * AcGePoint3d(offset->x, offset->y, offset->z);
}

} // namespace headless
