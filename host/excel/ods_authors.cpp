#include "excel/ods_authors.h"

#include <algorithm>

#include "excel/package_change.h"
#include "excel/zip_package.h"

namespace headless::excel {
namespace {

constexpr const char* kPart = "content.xml";

bool hasAuthors(const Sheet& sheet) {
    return std::ranges::any_of(sheet.comments,
                               [](const auto& entry) { return !entry.second.author.empty(); });
}

/// Both list the comments row by row.
void nameAuthors(const Sheet& sheet, const pugi::xml_node& table) {
    const pugi::xpath_node_set notes = table.select_nodes(".//office:annotation");
    if (notes.size() != sheet.comments.size()) return;
    auto comment = sheet.comments.begin();
    for (const pugi::xpath_node& note : notes) {
        const std::string& author = (comment++)->second.author;
        note.node().remove_child("dc:creator");
        if (!author.empty()) note.node().prepend_child("dc:creator").text() = author.c_str();
    }
}

} // namespace

void writeOdsAuthors(const Workbook& workbook, const std::string& path) {
    if (std::ranges::none_of(workbook.sheets, [](const auto& s) { return hasAuthors(*s); })) return;
    std::string bytes;
    {
        const std::string written = ZipPackage(path).read(kPart).value_or("");
        pugi::xml_document document;
        // Blanks between pieces of a text are part of it.
        document.load_buffer(written.data(), written.size(),
                             pugi::parse_full | pugi::parse_ws_pcdata);
        for (const pugi::xpath_node& table : document.select_nodes("//table:table")) {
            const auto sheet = workbook.findSheet(table.node().attribute("table:name").value());
            if (sheet != nullptr) nameAuthors(*sheet, table.node());
        }
        bytes = xmlText(document);
    }
    PackageChange change(path);
    change.replace(kPart, bytes);
    change.commit();
}

} // namespace headless::excel
