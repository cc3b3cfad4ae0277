#include "dxf/text_encoder.h"

#include <algorithm>
#include <cstdint>

#include "dxf/text_decoder.h"

namespace headless {
namespace {

constexpr wchar_t kFirstBeyondAscii = 0x80;
constexpr wchar_t kFirstPrintable = 0x20;

bool isAscii(wchar_t character) { return character >= 0 && character < kFirstBeyondAscii; }

void appendEscape(std::uint32_t unit, std::string& to) {
    to += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4)
        to += "0123456789ABCDEF"[unit >> shift & 0xF];
}

/// Programs of 16-bit characters read those beyond U+FFFF as two.
void appendEscapes(wchar_t character, std::string& to) {
    const auto point = static_cast<std::uint32_t>(character);
    if (point < 0x10000) {
        appendEscape(point, to);
    } else if (point < 0x110000) {
        appendEscape(0xD800 + ((point - 0x10000) >> 10), to);
        appendEscape(0xDC00 + ((point - 0x10000) & 0x3FF), to);
    } else {
        appendEscape(0xFFFD, to);
    }
}

} // namespace

TextEncoder TextEncoder::like(const TextDecoder& decoder, bool since2007) {
    if (since2007) return TextEncoder(kUtf8);
    const bool guesses = decoder.preferUtf8() && decoder.codePage() != kUtf8;
    return TextEncoder(guesses ? 0 : decoder.codePage());
}

void TextEncoder::append(std::wstring_view text, std::string& to) const {
    for (std::size_t at = 0; at < text.size();) {
        const wchar_t character = text[at];
        if (!isAscii(character)) {
            const auto end =
                std::find_if(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), isAscii);
            const auto length = static_cast<std::size_t>(end - text.begin()) - at;
            appendBeyondAscii(text.substr(at, length), to);
            at += length;
            continue;
        }
        if (character < kFirstPrintable) {
            to += '^';
            to += static_cast<char>(character + '@');
        } else {
            to += static_cast<char>(character);
        }
        ++at;
    }
}

void TextEncoder::appendBeyondAscii(std::wstring_view text, std::string& to) const {
    for (const wchar_t character : text) {
        ConversionReport report;
        std::string bytes;
        if (codePage_ != 0) bytes = encode({&character, 1}, codePage_, {.bestFit = false}, report);
        if (codePage_ == 0 || report.lossy || report.invalid)
            appendEscapes(character, to);
        else
            to += bytes;
    }
}

} // namespace headless
