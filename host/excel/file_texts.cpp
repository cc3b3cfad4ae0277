#include "excel/file_texts.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <sstream>

#include "excel/zip_package.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

/// Whether a run of letters looks different from the cell, apart from its font's name if told so.
bool hasLooks(const pugi::xml_node& run, const pugi::xml_node& first, LetterFonts fonts) {
    const auto written = [](const pugi::xml_node& looks) {
        std::ostringstream text;
        for (const pugi::xml_node& one : looks.children()) {
            const std::string_view name = localName(one.name());
            if (name != "rFont" && name != "family" && name != "charset" && name != "scheme")
                one.print(text, "", pugi::format_raw);
        }
        return text.str();
    };
    const pugi::xml_node looks = child(run, "rPr");
    if (fonts == LetterFonts::kFormat) return static_cast<bool>(looks);
    return written(looks) != written(child(first, "rPr"));
}

} // namespace

FileText readText(const pugi::xml_node& node, LetterFonts fonts) {
    FileText read;
    const pugi::xml_node first = child(node, "r");
    for (const pugi::xml_node& piece : node.children()) {
        const std::string_view name = localName(piece.name());
        if (name == "t") {
            read.text += piece.text().get();
        } else if (name == "r") {
            read.isRich = read.isRich || hasLooks(piece, first, fonts);
            read.text += child(piece, "t").text().get();
        }
    }
    read.text = unescaped(std::move(read.text));
    return read;
}

std::string unescaped(std::string text) {
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
        unsigned code = 0;
        const char* digits = text.data() + at + 2;
        if (at + 7 > text.size() || text[at + 6] != '_') continue;
        const auto [end, error] = std::from_chars(digits, digits + 4, code, 16);
        if (error != std::errc() || end != digits + 4) continue;
        text.replace(at, 7, toUtf8(std::wstring(1, static_cast<wchar_t>(code))));
    }
    return text;
}

CellValue dateValue(const std::string& text) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hours = 0;
    int minutes = 0;
    double seconds = 0.0;
    const int found = std::sscanf(text.c_str(), "%d-%2u-%2uT%2d:%2d:%lf", &year, &month, &day,
                                  &hours, &minutes, &seconds);
    using namespace std::chrono;
    const year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                              std::chrono::day{day}};
    if (found < 3 || !date.ok()) return text;
    constexpr sys_days kFirst = 1899y / December / 30;
    return static_cast<double>((sys_days(date) - kFirst).count()) +
           (hours * 3600.0 + minutes * 60.0 + seconds) / 86400.0;
}

} // namespace headless::excel
