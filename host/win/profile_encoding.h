// How a settings file holds its text: as UTF-16LE behind a byte-order mark, else in a code page.
//
// Lines are cut before they are decoded, so a broken character never swallows the end of its line,
// and bytes that are no text stay as they are in lines that nobody changes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace headless {

/// True for what may stand around names and values: space, tab, vertical tab, form feed.
[[nodiscard]] constexpr bool isProfileBlank(char32_t unit) noexcept {
    return unit == U' ' || unit == U'\t' || unit == U'\v' || unit == U'\f';
}

/// The encoding of one file. Offsets are bytes.
class ProfileEncoding {
public:
    /// @param bytes     the file from its beginning.
    /// @param codePage  of a file without the mark of UTF-16LE; other marks are not known.
    static ProfileEncoding of(std::string_view bytes, unsigned codePage);

    /// Bytes of the byte-order mark.
    [[nodiscard]] std::size_t markSize() const noexcept { return wide_ ? 2 : 0; }
    /// Bytes of a unit: 2 in UTF-16, 1 in a code page.
    [[nodiscard]] std::size_t unitSize() const noexcept { return wide_ ? 2 : 1; }

    [[nodiscard]] std::wstring decode(std::string_view bytes) const;
    /// What the code page lacks becomes '?'.
    [[nodiscard]] std::string encode(std::wstring_view text) const;

    struct Line {
        std::size_t begin;
        std::size_t end;  ///< Where the line end stands: CR LF, CR, LF or nothing.
        std::size_t next; ///< Where the next line begins.
    };
    /// The line that begins at `begin`; `bytes` is whole units.
    [[nodiscard]] Line lineAt(std::string_view bytes, std::size_t begin) const noexcept;
    /// True when a line can begin at `offset`, which may be the end of the bytes.
    [[nodiscard]] bool beginsLine(std::string_view bytes, std::size_t offset) const noexcept;

    /// Where the value begins in a line: behind the first '=' and the blanks after it. npos for a
    /// line without '='.
    [[nodiscard]] std::size_t valueOffset(std::string_view line) const noexcept;
    /// The line without the blanks at its end.
    [[nodiscard]] std::string_view withoutTrailingBlanks(std::string_view line) const noexcept;

private:
    ProfileEncoding(bool wide, unsigned codePage) : wide_(wide), codePage_(codePage) {}

    [[nodiscard]] char16_t unitAt(std::string_view bytes, std::size_t offset) const noexcept;
    [[nodiscard]] std::size_t characterSize(std::string_view bytes,
                                            std::size_t offset) const noexcept;

    bool wide_;
    unsigned codePage_;
};

} // namespace headless
