// Turns the bytes of a drawing's texts into wide characters.
#pragma once

#include <string>
#include <string_view>

namespace headless {

/// The text encoding of one file. Whatever it is, \U+XXXX stands for a character by its code point
/// and \M+nXXXX for one by its bytes in an East Asian code page, also amid raw bytes.
class TextDecoder {
public:
    /// @param codePage    of bytes beyond ASCII.
    /// @param preferUtf8  texts that are well-formed UTF-8 are taken for that; `codePage` serves
    ///                    the others.
    explicit TextDecoder(unsigned codePage = 1252, bool preferUtf8 = true)
        : codePage_(codePage), preferUtf8_(preferUtf8) {}

    /// From a header: UTF-8 for files of 2007 and later, else the code page of that name. Files
    /// without a usable name, or that claim to be ASCII, are guessed text by text, with
    /// `sessionPage` for what is no UTF-8.
    /// @param version   "AC1015" and so on.
    /// @param pageName  "ANSI_936", "dos850", or empty.
    /// @param known     false when the name says nothing to us.
    static TextDecoder forFile(std::string_view version, std::string_view pageName,
                               unsigned sessionPage, bool& known);

    [[nodiscard]] std::wstring decode(std::string_view bytes) const;

    unsigned codePage() const { return codePage_; }
    bool preferUtf8() const { return preferUtf8_; }

private:
    std::wstring decodeMixed(std::string_view bytes) const;
    std::size_t nextEscape(std::string_view bytes, std::size_t from, unsigned codePage) const;

    unsigned codePage_;
    bool preferUtf8_;
};

} // namespace headless
