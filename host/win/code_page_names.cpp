#include "win/code_page.h"

#include <array>
#include <charconv>

namespace headless {
namespace {

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

struct Name {
    std::string_view name;
    unsigned codePage;
};

// Names without a number in them, and numbers that are not Windows' own.
constexpr Name kNames[] = {
    {"ascii", 1252},     {"us-ascii", 1252},   {"utf8", 65001},     {"utf-8", 65001},
    {"gb2312", 936},     {"gbk", 936},         {"big5", 950},       {"ksc5601", 949},
    {"johab", 1361},     {"mac-roman", 10000}, {"macroman", 10000}, {"ansi_65001", 65001},
    {"dos65001", 65001},
};

// What stands before the number, and what is added to it.
constexpr Name kFamilies[] = {
    {"ansi_", 0},     {"ansi", 0},         {"dos", 0},           {"cp", 0},
    {"windows-", 0},  {"iso8859-", 28590}, {"iso-8859-", 28590}, {"iso_8859-", 28590},
    {"8859_", 28590},
};

} // namespace

std::optional<unsigned> codePageNumber(std::string_view dxfName) {
    const std::string name = lowerAscii(dxfName);
    for (const Name& known : kNames) {
        if (name == known.name) return known.codePage;
    }
    for (const Name& family : kFamilies) {
        if (!name.starts_with(family.name)) continue;
        const char* first = name.data() + family.name.size();
        const char* last = name.data() + name.size();
        unsigned number = 0;
        const auto [end, error] = std::from_chars(first, last, number);
        if (error == std::errc{} && end == last) return number + family.codePage;
    }
    return std::nullopt;
}

} // namespace headless
