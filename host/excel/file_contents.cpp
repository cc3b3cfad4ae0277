#include "excel/file_contents.h"

#include "excel/file_texts.h"

namespace headless::excel {

std::string FileContents::plainText(const pugi::xml_node& node) {
    FileText read = readText(node, letterFonts);
    if (read.isRich) foreign.add("formats of single letters");
    if (child(node, "rPh")) foreign.add("phonetic guides");
    return std::move(read.text);
}

} // namespace headless::excel
