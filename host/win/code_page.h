// Text between the wide characters of the platform and bytes in a code page.
//
// Results are those of Windows: unmappable characters become '?', characters without an exact
// counterpart their best fit, a lead byte with a bad trail byte one '?'. UTF-8 (65001) puts U+FFFD
// for what is broken. A wide character is a whole code point here but two units on Windows when it
// lies beyond U+FFFF, so such a character becomes two '?'.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace headless {

constexpr unsigned kUtf8 = 65001;

/// Page 0 (CP_ACP) and 1 (CP_OEMCP) answer the session's ANSI and OEM page, others themselves.
[[nodiscard]] unsigned resolvedCodePage(unsigned codePage);

/// True when text can be converted from and to the page.
[[nodiscard]] bool codePageInstalled(unsigned codePage);

/// Bytes in `codePage` (CP_ACP and CP_OEMCP allowed) as wide text, NULs included. A page that is
/// not installed keeps ASCII and turns every other byte into U+FFFD.
[[nodiscard]] std::wstring decode(std::string_view bytes, unsigned codePage);

/// Wide text as bytes in `codePage`. A page that is not installed keeps ASCII, the rest is '?'.
[[nodiscard]] std::string encode(std::wstring_view text, unsigned codePage);

/// What one conversion met besides text that maps exactly or by best fit.
struct ConversionReport {
    bool invalid = false; ///< Bytes or units that are no text in the page.
    bool lossy = false;   ///< Characters replaced by the default character.
};

/// How wide text is narrowed.
struct EncodeOptions {
    bool bestFit = true;                ///< False: a best fit counts as unmappable.
    std::string_view defaultText = "?"; ///< Bytes for what the page lacks.
};

/// decode() and encode() with a report; `codePage` must be installed.
[[nodiscard]] std::wstring decode(std::string_view bytes, unsigned codePage,
                                  ConversionReport& report);
[[nodiscard]] std::string encode(std::wstring_view text, unsigned codePage,
                                 const EncodeOptions& options, ConversionReport& report);

/// Wide text as UTF-8; surrogates and values beyond U+10FFFF become U+FFFD.
[[nodiscard]] std::string toUtf8(std::wstring_view text);

/// UTF-8 as wide text; each longest broken piece becomes one U+FFFD.
[[nodiscard]] std::wstring fromUtf8(std::string_view bytes);

/// True for well-formed UTF-8, ASCII included.
[[nodiscard]] bool isUtf8(std::string_view bytes);

/// The number of a code page as drawings name it: "ANSI_936", "dos850", "gb2312", "ascii", in any
/// case. Empty for a name that is not known.
[[nodiscard]] std::optional<unsigned> codePageNumber(std::string_view dxfName);

/// True when `byte` begins a two-byte character of the page.
[[nodiscard]] bool isLeadByte(unsigned codePage, unsigned char byte);

/// Most bytes one character of the page takes; 0 when the page is not installed.
[[nodiscard]] unsigned maxCharSize(unsigned codePage);

} // namespace headless
