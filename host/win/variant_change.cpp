#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cwctype>
#include <limits>
#include <optional>
#include <string>

#include "win/casing.h"
#include "win/code_page.h"
#include "win/owned_variant.h"
#include "win/variant.h"

namespace headless {
namespace {

struct Failure {
    HRESULT status;
};

// --- Texts as numbers ---

/// The digits of "&H1F" and "&O17"; nothing for other texts.
std::optional<double> parseRadix(std::string_view text) {
    if (text.size() < 3 || text[0] != '&') return std::nullopt;
    const int radix = (text[1] | 0x20) == 'h' ? 16 : (text[1] | 0x20) == 'o' ? 8 : 0;
    if (radix == 0) return std::nullopt;
    std::uint32_t value = 0;
    const auto [end, error] =
        std::from_chars(text.data() + 2, text.data() + text.size(), value, radix);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return static_cast<double>(std::bit_cast<std::int32_t>(value));
}

/// Takes the sign, the parentheses and the currency sign off; true when negative. A second sign
/// stays and fails later.
bool takeSign(std::string& text) {
    const auto trim = [&] {
        text.erase(0, text.find_first_not_of(" \t"));
        text.erase(text.find_last_not_of(" \t") + 1);
    };
    trim();
    bool negative = false;
    if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
        text = text.substr(1, text.size() - 2);
        negative = true;
    } else if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.erase(0, 1);
    } else if (!text.empty() && (text.back() == '-' || text.back() == '+')) {
        negative = text.back() == '-';
        text.pop_back();
    }
    trim();
    constexpr std::string_view kYuan = "\u00A5";
    if (text.starts_with(kYuan)) text.erase(0, kYuan.size());
    return negative;
}

double parseNumber(std::wstring_view wide) {
    std::string text = toUtf8(wide);
    const bool negative = takeSign(text);
    std::erase(text, ',');
    if (const auto value = parseRadix(text)) return negative ? -*value : *value;
    // What from_chars takes beyond digits, a point and an exponent: signs, "inf" and "nan".
    if (text.empty() || text.find_first_not_of("0123456789.eE+-") != std::string::npos ||
        text.find_first_of("0123456789") == std::string::npos || text.front() == '-' ||
        text.front() == '+') {
        throw Failure{DISP_E_TYPEMISMATCH};
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) throw Failure{DISP_E_OVERFLOW};
    if (error != std::errc() || end != text.data() + text.size()) {
        throw Failure{DISP_E_TYPEMISMATCH};
    }
    return negative ? -value : value;
}

bool parseBoolean(std::wstring_view text) {
    if (equalNoCase(text, L"true") || text == L"#TRUE#") return true;
    if (equalNoCase(text, L"false") || text == L"#FALSE#") return false;
    return parseNumber(text) != 0.0;
}

// --- Values as numbers ---

double decimalValue(const DECIMAL& decimal) {
    const double digits =
        static_cast<double>(decimal.Hi32) * std::ldexp(1.0, 64) + static_cast<double>(decimal.Lo64);
    const double value = digits / std::pow(10.0, decimal.scale);
    return (decimal.sign & 0x80) != 0 ? -value : value;
}

/// The value when it is an integer; nothing for other kinds.
std::optional<LONGLONG> integerValue(const VARIANT& value) {
    switch (value.vt) {
    case VT_EMPTY:
        return 0;
    case VT_I1:
        return static_cast<signed char>(value.cVal);
    case VT_UI1:
        return value.bVal;
    case VT_I2:
    case VT_BOOL:
        return value.iVal;
    case VT_UI2:
        return value.uiVal;
    case VT_I4:
    case VT_INT:
        return value.lVal;
    case VT_UI4:
    case VT_UINT:
        return value.ulVal;
    case VT_I8:
    case VT_UI8:
        return value.llVal;
    default:
        return std::nullopt;
    }
}

double realValue(const VARIANT& value) {
    if (const auto integer = integerValue(value)) {
        return value.vt == VT_UI8 ? static_cast<double>(value.ullVal)
                                  : static_cast<double>(*integer);
    }
    switch (value.vt) {
    case VT_R4:
        return static_cast<double>(value.fltVal);
    case VT_R8:
    case VT_DATE:
        return value.dblVal;
    case VT_CY:
        return static_cast<double>(value.cyVal.int64) / 10000.0;
    case VT_DECIMAL:
        return decimalValue(value.decVal);
    case VT_BSTR:
        return parseNumber(textOf(value.bstrVal));
    default:
        throw Failure{DISP_E_TYPEMISMATCH};
    }
}

template <class Integer>
Integer rounded(double value) {
    const double nearest = std::nearbyint(value);
    const double limit = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    const double lowest = std::is_signed_v<Integer> ? -limit : 0.0;
    if (!(nearest >= lowest && nearest < limit)) throw Failure{DISP_E_OVERFLOW};
    return static_cast<Integer>(nearest);
}

template <class Integer>
Integer integerAs(const VARIANT& value) {
    const auto integer = integerValue(value);
    if (!integer) return rounded<Integer>(realValue(value));
    // The same number of bits with or without a sign is taken as it is, True as all ones.
    if (value.vt == VT_BOOL) return static_cast<Integer>(*integer);
    using Signed = std::make_signed_t<Integer>;
    using Unsigned = std::make_unsigned_t<Integer>;
    if (*integer < std::numeric_limits<Signed>::min() ||
        (*integer > 0 && static_cast<ULONGLONG>(*integer) > std::numeric_limits<Unsigned>::max())) {
        throw Failure{DISP_E_OVERFLOW};
    }
    const bool sameWidth = (sizeof(Integer) == 1 && (value.vt == VT_I1 || value.vt == VT_UI1)) ||
                           (sizeof(Integer) == 2 && (value.vt == VT_I2 || value.vt == VT_UI2)) ||
                           (sizeof(Integer) == 4 && value.vt != VT_I8 && value.vt != VT_UI8) ||
                           sizeof(Integer) == 8;
    const bool fits = std::in_range<Integer>(*integer);
    if (!fits && !sameWidth) throw Failure{DISP_E_OVERFLOW};
    return static_cast<Integer>(*integer);
}

// --- Values as texts ---

/// Up to `digits` significant digits, the exponent with two digits at least.
std::wstring realText(double value, int digits) {
    std::array<char, 64> buffer{};
    const int length =
        std::snprintf(buffer.data(), buffer.size(), "%.*G", digits, value == 0.0 ? 0.0 : value);
    return {buffer.data(), buffer.data() + length};
}

std::wstring dateText(double days) {
    SYSTEMTIME time{};
    if (VariantTimeToSystemTime(days, &time) == FALSE) throw Failure{DISP_E_TYPEMISMATCH};
    std::array<wchar_t, 64> text{};
    const bool hasDay = std::trunc(days) != 0.0;
    const bool hasTime = days != std::trunc(days) || !hasDay;
    int length = 0;
    if (hasDay) {
        length = std::swprintf(text.data(), text.size(), hasTime ? L"%d/%d/%d " : L"%d/%d/%d",
                               time.wYear, time.wMonth, time.wDay);
    }
    if (hasTime) {
        std::swprintf(text.data() + length, text.size() - static_cast<std::size_t>(length),
                      L"%d:%02d:%02d", time.wHour, time.wMinute, time.wSecond);
    }
    return text.data();
}

std::wstring booleanText(const VARIANT& value, USHORT flags) {
    const bool isTrue = value.boolVal != VARIANT_FALSE;
    if ((flags & VARIANT_LOCALBOOL) != 0) return isTrue ? L"\u771F" : L"\u5047";
    if ((flags & VARIANT_ALPHABOOL) != 0) return isTrue ? L"True" : L"False";
    return std::to_wstring(value.boolVal);
}

std::wstring textValue(const VARIANT& value, USHORT flags) {
    switch (value.vt) {
    case VT_EMPTY:
        return {};
    case VT_BOOL:
        return booleanText(value, flags);
    case VT_UI8:
        return std::to_wstring(value.ullVal);
    case VT_R4:
        return realText(static_cast<double>(value.fltVal), 7);
    case VT_DATE:
        return dateText(value.date);
    default:
        break;
    }
    if (const auto integer = integerValue(value)) return std::to_wstring(*integer);
    return realText(realValue(value), 15);
}

double dateValue(const VARIANT& value) {
    if (value.vt == VT_BSTR) throw Failure{DISP_E_TYPEMISMATCH};
    const double days = realValue(value);
    SYSTEMTIME time{};
    if (VariantTimeToSystemTime(days, &time) == FALSE) throw Failure{DISP_E_OVERFLOW};
    return days;
}

/// The value converted, owned by nobody yet.
VARIANT converted(const VARIANT& value, USHORT flags, VARTYPE type) {
    VARIANT result{};
    switch (type) {
    case VT_I1:
        result.cVal = static_cast<CHAR>(integerAs<signed char>(value));
        break;
    case VT_UI1:
        result.bVal = integerAs<BYTE>(value);
        break;
    case VT_I2:
        result.iVal = integerAs<SHORT>(value);
        break;
    case VT_UI2:
        result.uiVal = integerAs<USHORT>(value);
        break;
    case VT_I4:
    case VT_INT:
        result.lVal = integerAs<LONG>(value);
        break;
    case VT_UI4:
    case VT_UINT:
        result.ulVal = integerAs<ULONG>(value);
        break;
    case VT_I8:
        result.llVal = integerAs<LONGLONG>(value);
        break;
    case VT_UI8:
        result.ullVal = integerAs<ULONGLONG>(value);
        break;
    case VT_R4:
        result.fltVal = static_cast<FLOAT>(realValue(value));
        if (std::isinf(result.fltVal) && !std::isinf(realValue(value))) {
            throw Failure{DISP_E_OVERFLOW};
        }
        break;
    case VT_R8:
        result.dblVal = realValue(value);
        break;
    case VT_DATE:
        result.date = dateValue(value);
        break;
    case VT_CY:
        result.cyVal.int64 = rounded<LONGLONG>(realValue(value) * 10000.0);
        break;
    case VT_BOOL: {
        const bool isTrue =
            value.vt == VT_BSTR ? parseBoolean(textOf(value.bstrVal)) : realValue(value) != 0.0;
        result.boolVal = isTrue ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    }
    case VT_BSTR: {
        const std::wstring text = textValue(value, flags);
        result.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        break;
    }
    default:
        throw Failure{type > VT_UINT ? DISP_E_BADVARTYPE : DISP_E_TYPEMISMATCH};
    }
    result.vt = type;
    return result;
}

} // namespace
} // namespace headless

HRESULT VariantChangeType(VARIANTARG* target, const VARIANTARG* source, USHORT flags,
                          VARTYPE type) {
    headless::OwnedVariant value;
    if (const HRESULT read = VariantCopyInd(&value, source); FAILED(read)) return read;
    if (value.vt != type) {
        try {
            headless::OwnedVariant changed;
            static_cast<VARIANT&>(changed) = headless::converted(value, flags, type);
            value = std::move(changed);
        } catch (const headless::Failure& failure) {
            return failure.status;
        }
    }
    if (const HRESULT cleared = VariantClear(target); FAILED(cleared)) return cleared;
    *target = value.release();
    return S_OK;
}
