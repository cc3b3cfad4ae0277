#include "win/code_page.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "win/code_page_table.h"
#include "win/state.h"
#include "win/utf8.h"

namespace headless {
namespace {

bool isAscii(wchar_t character) { return static_cast<std::uint32_t>(character) < 0x80; }
bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// Text of one lead byte and what follows it, appended; returns the bytes used.
std::size_t decodePair(const CodePageTable& table, std::string_view bytes, std::wstring& text,
                       ConversionReport& report) {
    const auto trail = static_cast<unsigned char>(bytes.size() > 1 ? bytes[1] : 0);
    const char16_t unit = table.pair(static_cast<unsigned char>(bytes[0]), trail);
    const bool isText = unit != CodePageTable::kInvalid;
    text.push_back(isText ? static_cast<wchar_t>(unit) : L'?');
    report.invalid = report.invalid || !isText;
    // A bad trail byte is lost with its lead byte, but an end of the text stays an end.
    return trail == 0 ? 1 : 2;
}

std::wstring decodeWith(const CodePageTable& table, std::string_view bytes,
                        ConversionReport& report) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (table.isLead(byte)) {
            i += decodePair(table, bytes.substr(i), text, report);
            continue;
        }
        const char16_t unit = table.single(byte);
        const bool isText = unit != CodePageTable::kInvalid;
        text.push_back(isText ? static_cast<wchar_t>(unit) : L'?');
        report.invalid = report.invalid || !isText || !table.strictlyValid(byte);
        ++i;
    }
    return text;
}

void append(std::string& bytes, std::uint16_t code) {
    if (code >= 256) bytes.push_back(static_cast<char>(code >> 8));
    bytes.push_back(static_cast<char>(code & 0xFF));
}

std::string encodeWith(const CodePageTable& table, std::wstring_view text,
                       const EncodeOptions& options, ConversionReport& report) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const wchar_t character : text) {
        if (isAscii(character)) {
            bytes.push_back(static_cast<char>(character));
            continue;
        }
        const auto value = static_cast<std::uint32_t>(character);
        const bool supplementary = value > 0xFFFF;
        const auto code = supplementary ? std::nullopt : table.code(static_cast<char16_t>(value));
        if (code && (code->exact || options.bestFit)) {
            append(bytes, code->bytes);
            continue;
        }
        report.lossy = true;
        bytes.append(options.defaultText);
        if (supplementary) bytes.append(options.defaultText);
    }
    return bytes;
}

} // namespace

unsigned resolvedCodePage(unsigned codePage) {
    if (codePage == 0) return WinState::current().ansiCodePage;
    if (codePage == 1) return WinState::current().oemCodePage;
    return codePage;
}

bool codePageInstalled(unsigned codePage) { return maxCharSize(codePage) != 0; }

unsigned maxCharSize(unsigned codePage) {
    const unsigned page = resolvedCodePage(codePage);
    if (page == kUtf8) return 4;
    const CodePageTable* table = CodePageTable::find(page);
    if (table == nullptr) return 0;
    return table->twoByte() ? 2 : 1;
}

bool isLeadByte(unsigned codePage, unsigned char byte) {
    const CodePageTable* table = CodePageTable::find(resolvedCodePage(codePage));
    return table != nullptr && table->isLead(byte);
}

std::wstring decode(std::string_view bytes, unsigned codePage, ConversionReport& report) {
    const unsigned page = resolvedCodePage(codePage);
    if (page == kUtf8) return decodeUtf8(bytes, report.invalid);
    if (const CodePageTable* table = CodePageTable::find(page)) {
        return decodeWith(*table, bytes, report);
    }
    std::wstring text(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [&report](char byte) {
        report.invalid = report.invalid || !isAscii(byte);
        return isAscii(byte) ? static_cast<wchar_t>(byte) : kReplacement;
    });
    return text;
}

std::string encode(std::wstring_view text, unsigned codePage, const EncodeOptions& options,
                   ConversionReport& report) {
    const unsigned page = resolvedCodePage(codePage);
    if (page == kUtf8) return encodeUtf8(text, report.invalid);
    if (const CodePageTable* table = CodePageTable::find(page)) {
        return encodeWith(*table, text, options, report);
    }
    std::string bytes(text.size(), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(), [&report](wchar_t character) {
        report.lossy = report.lossy || !isAscii(character);
        return isAscii(character) ? static_cast<char>(character) : '?';
    });
    return bytes;
}

std::wstring decode(std::string_view bytes, unsigned codePage) {
    if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return isAscii(byte); })) {
        return {bytes.begin(), bytes.end()};
    }
    ConversionReport report;
    return decode(bytes, codePage, report);
}

std::string encode(std::wstring_view text, unsigned codePage) {
    ConversionReport report;
    return encode(text, codePage, EncodeOptions{}, report);
}

} // namespace headless
