#include "excel/cell_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "excel/number_formats.h"
#include "win/casing.h"
#include "win/code_page.h"
#include "win/variant.h"

namespace headless::excel {
namespace {

std::string printed(const char* format, double value) {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

/// As cells without a number format show it: eleven characters at the most.
std::string generalText(double value) { return printed("%.10G", value); }

/// A format of zeros, hashes, group commas, decimals and a per cent sign; empty for others.
std::string digitsText(double value, std::string_view format) {
    const bool percent = format.ends_with('%');
    if (percent) format.remove_suffix(1);
    const bool grouped = format.starts_with("#,##");
    if (grouped) format.remove_prefix(4);
    const std::size_t point = format.find('.');
    const std::string_view decimals =
        point == std::string_view::npos ? "" : format.substr(point + 1);
    const std::string_view whole = format.substr(0, point);
    const auto allZeros = [](std::string_view text) {
        return text.find_first_not_of('0') == std::string_view::npos;
    };
    if (!allZeros(whole) || !allZeros(decimals) || whole.empty()) return {};
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%.*f", static_cast<int>(decimals.size()),
                  percent ? value * 100.0 : value);
    std::string shown = text.data();
    if (grouped) {
        const std::size_t start = shown.starts_with('-') ? 1 : 0;
        std::size_t at = std::min(shown.find('.'), shown.size());
        while (at > start + 3) {
            at -= 3;
            shown.insert(at, ",");
        }
    }
    return percent ? shown + "%" : shown;
}

std::string dateText(double days, std::string_view format) {
    SYSTEMTIME time{};
    if (VariantTimeToSystemTime(days, &time) == FALSE) return "#####";
    std::array<char, 64> text{};
    const bool hasDay = format.find_first_of("yYdD") != std::string_view::npos;
    const bool hasTime = format.find_first_of("hHsS") != std::string_view::npos;
    int length = 0;
    if (hasDay || !hasTime) {
        length =
            std::snprintf(text.data(), text.size(), "%d/%d/%d", time.wYear, time.wMonth, time.wDay);
    }
    if (hasTime) {
        std::snprintf(text.data() + length, text.size() - static_cast<std::size_t>(length),
                      length > 0 ? " %d:%02d" : "%d:%02d", time.wHour, time.wMinute);
    }
    return text.data();
}

std::string numberText(double value, const std::string& format) {
    if (format == "General" || format == "@") return generalText(value);
    if (showsDates(format)) return dateText(value, format);
    const std::string digits = digitsText(value, format);
    return digits.empty() ? generalText(value) : digits;
}

/// Half-width characters that a line takes.
double lineWidth(std::wstring_view line) {
    constexpr wchar_t kFirstWide = 0x1100;
    double width = 0.0;
    for (const wchar_t c : line)
        width += c >= kFirstWide ? 2.0 : 1.0;
    return width;
}

/// The number that a text reads as: digits with group commas, a per cent sign behind.
std::optional<double> typedNumber(std::string_view typed) {
    std::string text(typed);
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    if (text.find_first_not_of("0123456789.,eE+-%") != std::string::npos ||
        text.find_first_of("0123456789") == std::string::npos) {
        return std::nullopt;
    }
    const bool percent = text.ends_with('%');
    if (percent) text.pop_back();
    // Commas only where they group thousands.
    for (std::size_t comma = text.find(','); comma != std::string::npos; comma = text.find(',')) {
        const std::size_t end = text.find_first_not_of("0123456789", comma + 1);
        const std::size_t digits = std::min(end, text.size()) - comma - 1;
        if (digits != 3 || comma == 0) return std::nullopt;
        text.erase(comma, 1);
    }
    if (text.starts_with('+')) text.erase(0, 1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return percent ? value / 100.0 : value;
}

} // namespace

std::string shownText(const Cell& cell, const CellFormat& format) {
    if (const auto* text = std::get_if<std::string>(&cell.value)) return *text;
    if (const auto* number = std::get_if<double>(&cell.value)) {
        return numberText(*number, format.numberFormat);
    }
    if (const auto* truth = std::get_if<bool>(&cell.value)) return *truth ? "TRUE" : "FALSE";
    if (const auto* error = std::get_if<CellError>(&cell.value)) return error->text;
    return {};
}

void enterText(Cell& cell, const CellFormat& format, std::string_view text) {
    cell.formula.clear();
    if (text.empty()) {
        cell.value = {};
    } else if (format.numberFormat == "@") {
        cell.value = std::string(text);
    } else if (text.front() == '\'') {
        cell.value = std::string(text.substr(1));
    } else if (text.front() == '=' && text.size() > 1) {
        cell.formula = text.substr(1);
        cell.value = {};
    } else if (const auto number = typedNumber(text)) {
        cell.value = *number;
    } else if (text.size() == 4 && equalNoCase(fromUtf8(text), L"TRUE")) {
        cell.value = true;
    } else if (text.size() == 5 && equalNoCase(fromUtf8(text), L"FALSE")) {
        cell.value = false;
    } else {
        cell.value = std::string(text);
    }
}

double neededWidth(Sheet& sheet, const FormatTable& formats, int column) {
    constexpr double kUsualSize = 11.0;
    constexpr double kAir = 0.75;
    double needed = 0.0;
    sheet.forEach({1, column, kRows, column}, [&](int row, int, const Cell& cell) {
        const Area* merged = sheet.mergeAt(row, column);
        if (!cell.hasContent() || (merged != nullptr && merged->columns() > 1)) return;
        const CellFormat& format = formats.at(cell.format);
        const std::wstring text = fromUtf8(shownText(cell, format));
        for (std::size_t start = 0; start <= text.size();) {
            const std::size_t end = std::min(text.find(L'\n', start), text.size());
            const double line = lineWidth(std::wstring_view(text).substr(start, end - start));
            needed = std::max(needed, line * format.font.size / kUsualSize + kAir);
            start = end + 1;
        }
    });
    constexpr double kWidest = 255.0;
    return needed == 0.0 ? 0.0 : widthOfPixels(widthPixels(std::min(needed, kWidest)));
}

} // namespace headless::excel
