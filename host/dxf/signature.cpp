#include "dxf/signature.h"

#include <algorithm>

#include "dxf/ascii_scanner.h"
#include "dxf/binary_scanner.h"

namespace headless {
namespace {

using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    std::string_view kind;
};

constexpr Signature kSignatures[] = {
    {"\xFF\xD8\xFF"sv, "looks like a JPEG picture"},
    {"\x89PNG"sv, "looks like a PNG picture"},
    {"GIF8"sv, "looks like a GIF picture"},
    {"BM"sv, "looks like a BMP picture"},
    {"II*\0"sv, "looks like a TIFF picture"},
    {"MM\0*"sv, "looks like a TIFF picture"},
    {"%PDF"sv, "looks like a PDF document"},
    {"PK\x03\x04"sv, "looks like a ZIP archive"},
    {"\x1F\x8B"sv, "looks like a GZIP archive"},
    {"\xD0\xCF\x11\xE0"sv, "looks like an old office document"},
    {"\xFF\xFE"sv, "looks like UTF-16 text"},
    {"\xFE\xFF"sv, "looks like UTF-16 text"},
    {"<"sv, "looks like XML or HTML"},
    {"{"sv, "looks like JSON"},
};

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

/// DWG files begin with their version: AC1015 and the like, MC0.0 and AC1.2 the oldest.
bool isDwg(std::string_view bytes) {
    if (bytes.starts_with("MC0.0") || bytes.starts_with("AC1.") || bytes.starts_with("AC2.")) {
        return true;
    }
    return bytes.size() >= 6 && bytes.starts_with("AC10") && isDigit(bytes[4]) && isDigit(bytes[5]);
}

std::string_view kindOf(std::string_view bytes) {
    if (isDwg(bytes)) return "looks like a DWG drawing; save it as DXF";
    for (const Signature& signature : kSignatures) {
        if (bytes.starts_with(signature.bytes)) return signature.kind;
    }
    return "a group code is expected";
}

struct FirstLine {
    std::string_view text;
    std::size_t number = 1;
};

FirstLine firstLine(std::string_view bytes) {
    constexpr std::string_view kBlank = " \t\r\n";
    FirstLine line;
    const std::size_t begin = std::min(bytes.find_first_not_of(kBlank), bytes.size());
    const std::string_view before = bytes.substr(0, begin);
    line.number += static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::string_view rest = bytes.substr(begin, RecordScanner::kLongestLine);
    line.text = rest.substr(0, rest.find_first_of("\r\n"));
    return line;
}

} // namespace

std::string refusalOf(std::string_view bytes) {
    if (bytes.empty()) return "the file is empty";
    if (BinaryScanner::recognises(bytes)) return {};
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());

    const FirstLine first = firstLine(bytes);
    int code = 0;
    if (parseGroupCode(first.text, code)) return {};
    if (first.text.size() >= RecordScanner::kLongestLine) {
        return "line " + std::to_string(first.number) + ": the line is longer than " +
               std::to_string(RecordScanner::kLongestLine) + " characters";
    }
    return "line " + std::to_string(first.number) + ": not a DXF drawing (" +
           std::string(kindOf(bytes)) + ")";
}

} // namespace headless
