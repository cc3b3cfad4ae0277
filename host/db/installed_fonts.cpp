#include "db/installed_fonts.h"

#include <algorithm>
#include <memory>

#include <fontconfig/fontconfig.h>

#include "win/casing.h"
#include "win/code_page.h"

namespace headless {
namespace {

template <auto kDestroy>
struct Destroyer {
    template <class T>
    void operator()(T* object) const {
        kDestroy(object);
    }
};
using Config = std::unique_ptr<FcConfig, Destroyer<FcConfigDestroy>>;
using Pattern = std::unique_ptr<FcPattern, Destroyer<FcPatternDestroy>>;
using Properties = std::unique_ptr<FcObjectSet, Destroyer<FcObjectSetDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroyer<FcFontSetDestroy>>;

/// The nth value of a property; empty beyond the last.
std::string_view textOf(const FcPattern& font, const char* property, int n) {
    FcChar8* text = nullptr;
    if (FcPatternGetString(&font, property, n, &text) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(text);
}

int integerOf(const FcPattern& font, const char* property) {
    int value = 0;
    FcPatternGetInteger(&font, property, 0, &value);
    return value;
}

InstalledFont describe(const FcPattern& font) {
    InstalledFont installed{std::string(textOf(font, FC_FILE, 0)),
                            integerOf(font, FC_INDEX),
                            {},
                            integerOf(font, FC_WEIGHT) >= FC_WEIGHT_BOLD,
                            integerOf(font, FC_SLANT) != FC_SLANT_ROMAN};
    for (int n = 0; !textOf(font, FC_FAMILY, n).empty(); ++n)
        installed.families.push_back(fromUtf8(textOf(font, FC_FAMILY, n)));
    return installed;
}

} // namespace

std::vector<InstalledFont> installedFonts() {
    std::vector<InstalledFont> installed;
    const Config config(FcInitLoadConfigAndFonts());
    if (config == nullptr) return installed;
    const Pattern any(FcPatternCreate());
    const Properties wanted(
        FcObjectSetBuild(FC_FILE, FC_INDEX, FC_FAMILY, FC_WEIGHT, FC_SLANT, nullptr));
    const FontSet fonts(FcFontList(config.get(), any.get(), wanted.get()));
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i)
        installed.push_back(describe(*fonts->fonts[i]));
    return installed;
}

const InstalledFont* findFontFile(const std::vector<InstalledFont>& fonts, std::wstring_view name) {
    const auto isNamed = [&](const InstalledFont& font) {
        const std::string_view path = font.path;
        return equalNoCase(fromUtf8(path.substr(path.find_last_of('/') + 1)), name);
    };
    const auto found = std::find_if(fonts.begin(), fonts.end(), isNamed);
    return found == fonts.end() ? nullptr : &*found;
}

const InstalledFont* findFontFamily(const std::vector<InstalledFont>& fonts,
                                    std::wstring_view family, bool bold, bool italic) {
    const InstalledFont* best = nullptr;
    int bestLikeness = -1;
    for (const InstalledFont& font : fonts) {
        const bool isNamed =
            std::any_of(font.families.begin(), font.families.end(),
                        [&](const auto& name) { return equalNoCase(name, family); });
        const int likeness =
            static_cast<int>(font.bold == bold) + static_cast<int>(font.italic == italic);
        if (!isNamed || likeness <= bestLikeness) continue;
        best = &font;
        bestLikeness = likeness;
    }
    return best;
}

} // namespace headless
