// The fonts of the machine, as fontconfig lists them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace headless {

struct InstalledFont {
    std::string path;
    int index;                          // of the face in its file
    std::vector<std::wstring> families; // one family's names in several languages
    bool bold;
    bool italic;
};

[[nodiscard]] std::vector<InstalledFont> installedFonts();

/// The font of that file name, whatever its folder; null when it is not installed.
[[nodiscard]] const InstalledFont* findFontFile(const std::vector<InstalledFont>& fonts,
                                                std::wstring_view name);
/// The font of that family that is nearest to what is asked; null when the family is not installed.
[[nodiscard]] const InstalledFont* findFontFamily(const std::vector<InstalledFont>& fonts,
                                                  std::wstring_view family, bool bold, bool italic);

} // namespace headless
