#include "dxf/text_decoder.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "win/code_page.h"

namespace headless {
namespace {

constexpr std::size_t kUnicodeEscape = 7;   // \U+XXXX
constexpr std::size_t kMultibyteEscape = 8; // \M+nXXXX

bool isPlain(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x80 && byte != '\\';
    });
}

std::optional<std::uint32_t> fourDigits(std::string_view text) {
    if (text.size() < 4) return std::nullopt;
    std::uint32_t value = 0;
    const char* const last = text.data() + 4;
    const auto [end, error] = std::from_chars(text.data(), last, value, 16);
    if (error != std::errc{} || end != last) return std::nullopt;
    return value;
}

std::optional<std::uint32_t> unicodeEscape(std::string_view text) {
    if (!text.starts_with("\\U+")) return std::nullopt;
    return fourDigits(text.substr(3));
}

bool isHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Appends the character of the escape at the beginning of `text`; returns how many bytes it took,
/// 0 when there is none. Programs of 16-bit characters write those beyond U+FFFF as two escapes.
std::size_t takeUnicode(std::string_view text, std::wstring& to) {
    const auto unit = unicodeEscape(text);
    if (!unit) return 0;
    if (isHighSurrogate(*unit)) {
        const auto low = unicodeEscape(text.substr(kUnicodeEscape));
        if (low && isLowSurrogate(*low)) {
            to += static_cast<wchar_t>(0x10000 + ((*unit - 0xD800) << 10) + (*low - 0xDC00));
            return 2 * kUnicodeEscape;
        }
    }
    const bool scalar = !isHighSurrogate(*unit) && !isLowSurrogate(*unit) && *unit != 0;
    to += scalar ? static_cast<wchar_t>(*unit) : L'\xFFFD';
    return kUnicodeEscape;
}

std::optional<unsigned> escapePage(char digit) {
    constexpr unsigned kPages[] = {932, 950, 949, 1361, 936};
    if (digit < '1' || digit > '5') return std::nullopt;
    return kPages[digit - '1'];
}

std::size_t takeMultibyte(std::string_view text, std::wstring& to) {
    if (text.size() < kMultibyteEscape || !text.starts_with("\\M+")) return 0;
    const auto page = escapePage(text[3]);
    const auto code = fourDigits(text.substr(4));
    if (!page || !code || *code == 0 || !codePageInstalled(*page)) return 0;

    const char bytes[] = {static_cast<char>(*code >> 8), static_cast<char>(*code & 0xFF)};
    to += *code < 0x100 ? decode({bytes + 1, 1}, *page) : decode({bytes, 2}, *page);
    return kMultibyteEscape;
}

} // namespace

TextDecoder TextDecoder::forFile(std::string_view version, std::string_view pageName,
                                 unsigned sessionPage, bool& known) {
    const auto page = codePageNumber(pageName);
    known = pageName.empty() || (page && codePageInstalled(*page));
    const unsigned usable = page && known ? *page : sessionPage;
    const bool since2007 = version >= "AC1021" && version.starts_with("AC1");
    std::string lower(pageName);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    const bool guess = pageName.empty() || !known || lower == "ascii";
    return TextDecoder(usable, since2007 || guess || usable == kUtf8);
}

std::wstring TextDecoder::decode(std::string_view bytes) const {
    if (isPlain(bytes)) return {bytes.begin(), bytes.end()};
    return decodeMixed(bytes);
}

std::wstring TextDecoder::decodeMixed(std::string_view bytes) const {
    const unsigned page = preferUtf8_ && isUtf8(bytes) ? kUtf8 : codePage_;
    std::wstring text;
    std::size_t rawBegin = 0;
    std::size_t at = nextEscape(bytes, 0, page);
    while (at < bytes.size()) {
        std::wstring character;
        std::size_t taken = takeUnicode(bytes.substr(at), character);
        if (taken == 0) taken = takeMultibyte(bytes.substr(at), character);
        if (taken != 0) {
            text += headless::decode(bytes.substr(rawBegin, at - rawBegin), page) + character;
            rawBegin = at + taken;
        }
        at = nextEscape(bytes, taken == 0 ? at + 1 : rawBegin, page);
    }
    return text + headless::decode(bytes.substr(rawBegin), page);
}

/// The next backslash that is a character of its own: in two-byte code pages it also occurs as the
/// second byte of others.
std::size_t TextDecoder::nextEscape(std::string_view bytes, std::size_t from,
                                    unsigned codePage) const {
    while (from < bytes.size() && bytes[from] != '\\') {
        const auto byte = static_cast<unsigned char>(bytes[from]);
        from += byte >= 0x80 && isLeadByte(codePage, byte) ? 2 : 1;
    }
    return std::min(from, bytes.size());
}

} // namespace headless
