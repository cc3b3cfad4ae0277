// Fonts: how wide letters are, by the font files of the machine.
//
// A style names its font as a file of outlines (TrueType, OpenType), as a family of the system, or
// as a file of drawn strokes (SHX), whose format no one but the platform reads. A font that is not
// here is stood in for by WenQuanYi Micro Hei, which has nearly all Chinese letters, and where that
// is absent by a letter of 0.6 and a square of 1 text height.
//
// The text height is the height of capitals. Squares (Han and the like) of drawn fonts are as wide
// as the text is high; those of outlines are what the file says.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace headless {

/// What a text style or an inline code asks for.
struct FontRequest {
    std::wstring file;     // of outlines or strokes; empty when a family is named
    std::wstring typeface; // a family of the system; counts before the file
    bool bold = false;
    bool italic = false;

    friend auto operator<=>(const FontRequest&, const FontRequest&) = default;
};

class FontFile;

/// The letters of one request.
class TextFont {
public:
    TextFont(std::shared_ptr<FontFile> file, std::shared_ptr<FontFile> substitute, bool drawn)
        : file_(std::move(file)), substitute_(std::move(substitute)), drawn_(drawn) {}

    /// From a letter's start to the next one's, in multiples of the text height.
    [[nodiscard]] double width(wchar_t letter) const;
    [[nodiscard]] double width(std::wstring_view letters) const;
    /// Where the letters come from; empty when there is no font at all.
    [[nodiscard]] std::filesystem::path path() const;
    /// The family, UTF-8; empty when there is no font at all.
    [[nodiscard]] std::string family() const;
    /// The font's em, in multiples of the text height.
    [[nodiscard]] double em() const;

private:
    /// The one that most letters come from; null when there is none.
    [[nodiscard]] const FontFile* main() const {
        return file_ != nullptr ? file_.get() : substitute_.get();
    }

    std::shared_ptr<FontFile> file_; // may be null, as may the substitute
    std::shared_ptr<FontFile> substitute_;
    bool drawn_;
};

/// The fonts that a session has looked for.
class FontLibrary {
public:
    FontLibrary();
    ~FontLibrary();
    FontLibrary(const FontLibrary&) = delete;
    FontLibrary& operator=(const FontLibrary&) = delete;

    /// The answer lives as long as the library.
    const TextFont& find(const FontRequest& request);

private:
    struct System; // what fontconfig and FreeType hold

    std::unique_ptr<System> system_;
    std::map<FontRequest, TextFont> found_;
};

/// Han, kana, hangul, full-width forms and their punctuation: letters that fill a square.
[[nodiscard]] bool isSquareLetter(wchar_t letter);

} // namespace headless
