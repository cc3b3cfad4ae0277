#include "db/font_file.h"

#include FT_ADVANCES_H
#include FT_TRUETYPE_TABLES_H

namespace headless {
namespace {

struct FreeTypeCloser {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
};

/// Height of the capitals in the font's units.
double heightOfCapitals(FT_Face face) {
    constexpr FT_UShort kFirstWithCapitals = 2;
    const auto* const metrics = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (metrics != nullptr && metrics->version >= kFirstWithCapitals && metrics->sCapHeight > 0)
        return metrics->sCapHeight;
    const bool loaded = FT_Load_Char(face, U'H', FT_LOAD_NO_SCALE) == 0;
    if (loaded && face->glyph->metrics.horiBearingY > 0)
        return static_cast<double>(face->glyph->metrics.horiBearingY);
    return face->units_per_EM > 0 ? face->units_per_EM : 1.0;
}

} // namespace

FreeType startFreeType() {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) return nullptr;
    return {library, FreeTypeCloser()};
}

std::shared_ptr<FontFile> FontFile::open(FreeType library, const std::string& path, int index) {
    FT_Face face = nullptr;
    if (library == nullptr || FT_New_Face(library.get(), path.c_str(), index, &face) != 0)
        return nullptr;
    return std::shared_ptr<FontFile>(new FontFile(std::move(library), face, path));
}

FontFile::FontFile(FreeType library, FT_Face face, std::string path)
    : library_(std::move(library)), face_(face), path_(std::move(path)),
      capitals_(heightOfCapitals(face)) {}

FontFile::~FontFile() { FT_Done_Face(face_); }

std::optional<double> FontFile::width(wchar_t letter) {
    const auto [known, isNew] = widths_.try_emplace(letter);
    if (isNew) known->second = measure(letter);
    return known->second;
}

std::string FontFile::family() const {
    return face_->family_name == nullptr ? std::string() : face_->family_name;
}

double FontFile::em() const { return face_->units_per_EM / capitals_; }

std::optional<double> FontFile::measure(wchar_t letter) const {
    const FT_UInt glyph = FT_Get_Char_Index(face_, static_cast<FT_ULong>(letter));
    FT_Fixed advance = 0;
    if (glyph == 0 || FT_Get_Advance(face_, glyph, FT_LOAD_NO_SCALE, &advance) != 0)
        return std::nullopt;
    return static_cast<double>(advance) / capitals_;
}

} // namespace headless
