#include "win/profile_encoding.h"

#include <cstdint>

#include "win/code_page.h"
#include "win/utf8.h"

namespace headless {
namespace {

constexpr std::string_view kMark = "\xFF\xFE";
constexpr std::uint32_t kSupplementary = 0x10000;

bool isLineEnd(char16_t unit) { return unit == u'\r' || unit == u'\n'; }
bool isHigh(std::uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(std::uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

std::uint32_t unitOf(std::string_view bytes, std::size_t offset) {
    return static_cast<unsigned char>(bytes[offset]) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + 1])) << 8;
}

void appendUnit(std::string& bytes, std::uint32_t unit) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8 & 0xFF));
}

/// Half pairs stay what they are.
std::wstring decodeUtf16(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::uint32_t character = unitOf(bytes, i);
        if (isHigh(character) && i + 3 < bytes.size() && isLow(unitOf(bytes, i + 2))) {
            i += 2;
            character = kSupplementary + ((character & 0x3FF) << 10) + (unitOf(bytes, i) & 0x3FF);
        }
        text.push_back(static_cast<wchar_t>(character));
    }
    return text;
}

std::string encodeUtf16(std::wstring_view text) {
    constexpr std::uint32_t kLast = 0x10FFFF;
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const wchar_t character : text) {
        const auto value = static_cast<std::uint32_t>(character);
        if (value < kSupplementary) {
            appendUnit(bytes, value);
        } else if (value <= kLast) {
            appendUnit(bytes, 0xD800 + ((value - kSupplementary) >> 10));
            appendUnit(bytes, 0xDC00 + (value & 0x3FF));
        } else {
            appendUnit(bytes, kReplacement);
        }
    }
    return bytes;
}

} // namespace

ProfileEncoding ProfileEncoding::of(std::string_view bytes, unsigned codePage) {
    return {bytes.starts_with(kMark), codePage};
}

std::wstring ProfileEncoding::decode(std::string_view bytes) const {
    return wide_ ? decodeUtf16(bytes) : headless::decode(bytes, codePage_);
}

std::string ProfileEncoding::encode(std::wstring_view text) const {
    return wide_ ? encodeUtf16(text) : headless::encode(text, codePage_);
}

char16_t ProfileEncoding::unitAt(std::string_view bytes, std::size_t offset) const noexcept {
    return static_cast<char16_t>(wide_ ? unitOf(bytes, offset)
                                       : static_cast<unsigned char>(bytes[offset]));
}

std::size_t ProfileEncoding::characterSize(std::string_view bytes,
                                           std::size_t offset) const noexcept {
    if (wide_) return 2;
    const auto byte = static_cast<unsigned char>(bytes[offset]);
    const bool pair = offset + 1 < bytes.size() && bytes[offset + 1] != 0 && byte >= 0x80 &&
                      isLeadByte(codePage_, byte);
    return pair ? 2 : 1;
}

ProfileEncoding::Line ProfileEncoding::lineAt(std::string_view bytes,
                                              std::size_t begin) const noexcept {
    const std::size_t size = unitSize();
    std::size_t end = begin;
    while (end < bytes.size() && !isLineEnd(unitAt(bytes, end)))
        end += size;
    std::size_t next = end;
    if (next < bytes.size()) {
        const bool mayBePair = unitAt(bytes, next) == u'\r';
        next += size;
        if (mayBePair && next < bytes.size() && unitAt(bytes, next) == u'\n') next += size;
    }
    return {begin, end, next};
}

bool ProfileEncoding::beginsLine(std::string_view bytes, std::size_t offset) const noexcept {
    return offset <= markSize() || isLineEnd(unitAt(bytes, offset - unitSize()));
}

std::size_t ProfileEncoding::valueOffset(std::string_view line) const noexcept {
    std::size_t offset = 0;
    while (offset < line.size() && unitAt(line, offset) != u'=')
        offset += characterSize(line, offset);
    if (offset >= line.size()) return std::string_view::npos;
    do {
        offset += unitSize();
    } while (offset < line.size() && isProfileBlank(unitAt(line, offset)));
    return offset;
}

std::string_view ProfileEncoding::withoutTrailingBlanks(std::string_view line) const noexcept {
    const std::size_t size = unitSize();
    while (line.size() >= size && isProfileBlank(unitAt(line, line.size() - size)))
        line.remove_suffix(size);
    return line;
}

} // namespace headless
