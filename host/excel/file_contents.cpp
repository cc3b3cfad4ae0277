#include "excel/file_contents.h"

#include <algorithm>

#include "excel/file_texts.h"

namespace headless::excel {

OutlinePlace outlinePlace(const pugi::xml_node& node) {
    constexpr int kDeepest = 7;
    return {std::clamp(node.attribute("outlineLevel").as_int(), 0, kDeepest),
            node.attribute("collapsed").as_bool()};
}

std::string FileContents::plainText(const pugi::xml_node& node) {
    FileText read = readText(node, letterFonts);
    if (read.isRich) foreign.add("formats of single letters");
    if (child(node, "rPh")) foreign.add("phonetic guides");
    return std::move(read.text);
}

} // namespace headless::excel
