#include "win/code_page.h"

#include "win/utf8.h"

namespace headless {
namespace {

/// The length of a sequence and the range of its second byte, by its first byte.
struct Sequence {
    unsigned length; // 0: no such first byte
    unsigned char low, high;
};

Sequence sequenceOf(unsigned char first) {
    if (first < 0x80) return {1, 0, 0};
    if (first < 0xC2) return {0, 0, 0};
    if (first < 0xE0) return {2, 0x80, 0xBF};
    if (first < 0xF0) {
        return {3, static_cast<unsigned char>(first == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(first == 0xED ? 0x9F : 0xBF)};
    }
    if (first < 0xF5) {
        return {4, static_cast<unsigned char>(first == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(first == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0};
}

/// One code point read from the front of `bytes` (not empty).
struct Decoded {
    wchar_t character;
    std::size_t length;
    bool valid;
};

Decoded decodeOne(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const Sequence sequence = sequenceOf(first);
    if (sequence.length == 1) return {static_cast<wchar_t>(first), 1, true};
    if (sequence.length == 0) return {kReplacement, 1, false};

    unsigned value = first & (0x7FU >> sequence.length);
    for (std::size_t i = 1; i < sequence.length; ++i) {
        if (i == bytes.size()) return {kReplacement, i, false};
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const bool fits =
            i == 1 ? byte >= sequence.low && byte <= sequence.high : (byte & 0xC0U) == 0x80U;
        if (!fits) return {kReplacement, i, false};
        value = value << 6 | (byte & 0x3FU);
    }
    return {static_cast<wchar_t>(value), sequence.length, true};
}

bool isScalarValue(std::uint32_t value) {
    return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

} // namespace

std::wstring decodeUtf8(std::string_view bytes, bool& invalid) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Decoded next = decodeOne(bytes);
        text.push_back(next.character);
        invalid = invalid || !next.valid;
        bytes.remove_prefix(next.length);
    }
    return text;
}

std::string encodeUtf8(std::wstring_view text, bool& invalid) {
    std::string bytes;
    bytes.reserve(text.size());
    const auto put = [&bytes](std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    for (const wchar_t character : text) {
        auto value = static_cast<std::uint32_t>(character);
        if (!isScalarValue(value)) {
            value = kReplacement;
            invalid = true;
        }
        if (value < 0x80) {
            put(value);
        } else if (value < 0x800) {
            put(0xC0 | value >> 6);
            put(0x80 | (value & 0x3F));
        } else if (value < 0x10000) {
            put(0xE0 | value >> 12);
            put(0x80 | (value >> 6 & 0x3F));
            put(0x80 | (value & 0x3F));
        } else {
            put(0xF0 | value >> 18);
            put(0x80 | (value >> 12 & 0x3F));
            put(0x80 | (value >> 6 & 0x3F));
            put(0x80 | (value & 0x3F));
        }
    }
    return bytes;
}

std::string toUtf8(std::wstring_view text) {
    bool invalid = false;
    return encodeUtf8(text, invalid);
}

std::wstring fromUtf8(std::string_view bytes) {
    bool invalid = false;
    return decodeUtf8(bytes, invalid);
}

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const Decoded next = decodeOne(bytes);
        if (!next.valid) return false;
        bytes.remove_prefix(next.length);
    }
    return true;
}

} // namespace headless
