// A font file's letters.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include <ft2build.h>

#include FT_FREETYPE_H

namespace headless {

using FreeType = std::shared_ptr<std::remove_pointer_t<FT_Library>>;

/// Null when FreeType cannot start.
[[nodiscard]] FreeType startFreeType();

/// A face of a font file, in multiples of the height of its capitals.
class FontFile {
public:
    /// Null when FreeType cannot read the file.
    /// @param index  of the face, in files that hold several.
    static std::shared_ptr<FontFile> open(FreeType library, const std::string& path, int index);
    ~FontFile();
    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;

    /// From a letter's start to the next one's; empty for a letter that the font does not have.
    std::optional<double> width(wchar_t letter);
    const std::string& path() const { return path_; }
    std::string family() const;
    /// The size that fonts are asked for by.
    double em() const;

private:
    FontFile(FreeType library, FT_Face face, std::string path);

    std::optional<double> measure(wchar_t letter) const;

    FreeType library_; // outlives the face
    FT_Face face_;
    std::string path_;
    double capitals_; // in the font's units
    std::unordered_map<wchar_t, std::optional<double>> widths_;
};

} // namespace headless
