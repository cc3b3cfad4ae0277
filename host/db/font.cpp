#include "db/font.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>

#include "db/font_file.h"
#include "db/installed_fonts.h"
#include "win/casing.h"

namespace headless {
namespace {

/// Of a letter that no font has.
double plainWidth(wchar_t letter) {
    constexpr double kLetter = 0.6;
    return isSquareLetter(letter) ? 1.0 : kLetter;
}

/// The name behind the last separator of either kind.
std::wstring_view baseName(std::wstring_view path) {
    return path.substr(path.find_last_of(L"/\\") + 1);
}

/// True for fonts of strokes: files that are none of outlines.
bool isDrawn(const FontRequest& request) {
    if (!request.typeface.empty()) return false;
    const std::wstring name = lowerCased(request.file);
    constexpr std::array<std::wstring_view, 3> kOutlines = {L".ttf", L".ttc", L".otf"};
    return std::none_of(kOutlines.begin(), kOutlines.end(),
                        [&](std::wstring_view ending) { return name.ends_with(ending); });
}

} // namespace

bool isSquareLetter(wchar_t letter) {
    const auto code = static_cast<char32_t>(letter);
    return (code >= 0x1100 && code <= 0x115F) || (code >= 0x2E80 && code <= 0xD7A3) ||
           (code >= 0xF900 && code <= 0xFAFF) || (code >= 0xFE30 && code <= 0xFE6F) ||
           (code >= 0xFF00 && code <= 0xFF60) || (code >= 0xFFE0 && code <= 0xFFE6) ||
           (code >= 0x20000 && code <= 0x3FFFF);
}

double TextFont::width(wchar_t letter) const {
    if (drawn_ && isSquareLetter(letter)) return 1.0;
    for (FontFile* const file : {file_.get(), substitute_.get()}) {
        if (file == nullptr) continue;
        if (const std::optional<double> width = file->width(letter)) return *width;
    }
    return plainWidth(letter);
}

double TextFont::width(std::wstring_view letters) const {
    return std::accumulate(letters.begin(), letters.end(), 0.0,
                           [this](double sum, wchar_t letter) { return sum + width(letter); });
}

std::filesystem::path TextFont::path() const {
    return main() == nullptr ? std::filesystem::path() : std::filesystem::path(main()->path());
}

std::string TextFont::family() const {
    return main() == nullptr ? std::string() : main()->family();
}

double TextFont::em() const {
    constexpr double kUsual = 1.4;
    return main() == nullptr ? kUsual : main()->em();
}

struct FontLibrary::System {
    FreeType freeType = startFreeType();
    std::vector<InstalledFont> fonts = installedFonts();
    std::shared_ptr<FontFile> substitute =
        open(findFontFamily(fonts, L"WenQuanYi Micro Hei", false, false));

    /// Null for null.
    std::shared_ptr<FontFile> open(const InstalledFont* font) const {
        return font == nullptr ? nullptr : FontFile::open(freeType, font->path, font->index);
    }
};

FontLibrary::FontLibrary() = default;
FontLibrary::~FontLibrary() = default;

const TextFont& FontLibrary::find(const FontRequest& request) {
    const auto known = found_.find(request);
    if (known != found_.end()) return known->second;
    if (system_ == nullptr) system_ = std::make_unique<System>();
    const bool drawn = isDrawn(request);
    const InstalledFont* font =
        findFontFamily(system_->fonts, request.typeface, request.bold, request.italic);
    if (font == nullptr && !drawn) font = findFontFile(system_->fonts, baseName(request.file));
    return found_.emplace(request, TextFont(system_->open(font), system_->substitute, drawn))
        .first->second;
}

} // namespace headless
