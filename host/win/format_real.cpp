// Real numbers as the platform's C run time prints them, over the C library's exact digits.
#include "win/format.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace headless {
namespace {

std::string print(long double value, char conversion, int precision, bool alternate) {
    const char format[] = {'%', '#', '.', '*', 'L', conversion, '\0'};
    const char plain[] = {'%', '.', '*', 'L', conversion, '\0'};
    const char* chosen = alternate ? format : plain;
    // Most numbers are short; a large value in full, or with many places, takes a second go.
    char buffer[64];
    const int length = std::snprintf(buffer, sizeof buffer, chosen, precision, value);
    if (length < static_cast<int>(sizeof buffer)) return buffer;
    std::string text(static_cast<std::size_t>(length), '\0');
    std::snprintf(text.data(), text.size() + 1, chosen, precision, value);
    return text;
}

/// True when a value lies exactly between two neighbours of `decimals` decimals (not negative).
bool isTieAtDecimals(double value, int decimals) {
    // A tie has at most decimals + 1 binary places, so this many decimals show all of it.
    const double scaled = std::ldexp(value, decimals + 1);
    if (scaled != std::trunc(scaled)) return false;
    const std::string exact = print(value, 'f', decimals + 1, false);
    return exact.back() == '5';
}

/// The same where whole digits before the point are cut: at tens for 1, at hundreds for 2.
bool isTieAtPowerOfTen(double value, int power) {
    const double unit = std::pow(10.0, power);
    return std::fmod(std::abs(value), unit) == unit / 2;
}

/// True when the C library's rounding to even and the platform's away from zero differ or might.
bool roundsAtTie(double value, char conversion, int precision) {
    if (value == 0) return false;
    const char kind = static_cast<char>(std::tolower(conversion));
    if (kind == 'f') return isTieAtDecimals(value, precision);
    constexpr int kMaxDoubleDigits = 17;
    const std::string scientific = print(value, 'e', kMaxDoubleDigits, false);
    const int exponent = std::atoi(scientific.c_str() + scientific.find('e') + 1);
    const int significant = kind == 'e' ? precision + 1 : std::max(precision, 1);
    const int decimals = significant - 1 - exponent;
    return decimals >= 0 ? isTieAtDecimals(value, decimals) : isTieAtPowerOfTen(value, -decimals);
}

/// Three digits at least in the exponent.
void widenExponent(std::string& text, char letter) {
    const std::size_t exponent = text.rfind(letter);
    if (exponent == std::string::npos) return;
    const std::size_t digits = text.size() - exponent - 2;
    if (digits < 3) text.insert(exponent + 2, 3 - digits, '0');
}

/// "1.#INF" and its like, cut and rounded as if the letters were digits.
std::string formatSpecial(double value, char conversion, int precision) {
    const char kind = static_cast<char>(std::tolower(conversion));
    std::string digits = std::isinf(value) ? "#INF" : "#QNAN";
    if (kind == 'a') precision = precision < 0 ? 13 : precision;
    auto places = static_cast<std::size_t>(precision < 0 ? 6 : precision);
    if (kind == 'g') places = std::min(places == 0 ? 0 : places - 1, digits.size());
    if (places < digits.size()) {
        const bool roundUp = digits[places] >= '5';
        digits.resize(places);
        if (roundUp && !digits.empty()) ++digits.back();
    } else {
        digits.append(places - digits.size(), '0');
    }
    std::string text = std::signbit(value) ? "-" : "";
    if (kind == 'a') text += conversion == 'a' ? "0x" : "0X";
    text += digits.empty() ? "1" : "1." + digits;
    if (kind == 'e') text += conversion == 'e' ? "e+000" : "E+000";
    if (kind == 'a') text += conversion == 'a' ? "p+0" : "P+0";
    return text;
}

/// Hexadecimal with all thirteen digits, which the C library leaves out when they are zeros.
std::string formatHexadecimal(double value, char conversion, int precision, bool alternate) {
    const char format[] = {'%', '.', '*', conversion, '\0'};
    const char pointed[] = {'%', '#', '.', '*', conversion, '\0'};
    constexpr int kMantissaDigits = 13;
    char text[1100];
    std::snprintf(text, sizeof text, alternate ? pointed : format,
                  precision < 0 ? kMantissaDigits : std::min(precision, 1000), value);
    return text;
}

} // namespace

std::string formatReal(double value, char conversion, int precision, bool alternate) {
    if (!std::isfinite(value)) return formatSpecial(value, conversion, precision);
    if (conversion == 'a' || conversion == 'A') {
        return formatHexadecimal(value, conversion, precision, alternate);
    }
    const int places = precision < 0 ? 6 : precision;
    // The nearest long double beyond a tie tips it away from zero and changes no other digit.
    long double printed = value;
    if (roundsAtTie(value, conversion, places)) {
        printed = std::nextafter(printed, std::copysign(HUGE_VALL, printed));
    }
    std::string text = print(printed, conversion, places, alternate);
    const bool isUpper = std::isupper(static_cast<unsigned char>(conversion)) != 0;
    if (conversion != 'f' && conversion != 'F') widenExponent(text, isUpper ? 'E' : 'e');
    return text;
}

} // namespace headless
