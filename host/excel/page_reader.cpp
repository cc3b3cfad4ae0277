#include "excel/page_reader.h"

#include <map>

#include "excel/zip_package.h"

namespace headless::excel {
namespace {

bool readMargins(PageSetup& page, const pugi::xml_node& node) {
    page.leftMargin = node.attribute("left").as_double(page.leftMargin);
    page.rightMargin = node.attribute("right").as_double(page.rightMargin);
    page.topMargin = node.attribute("top").as_double(page.topMargin);
    page.bottomMargin = node.attribute("bottom").as_double(page.bottomMargin);
    page.headerMargin = node.attribute("header").as_double(page.headerMargin);
    page.footerMargin = node.attribute("footer").as_double(page.footerMargin);
    return true;
}

bool readSetup(PageSetup& page, const pugi::xml_node& node) {
    page.landscape = std::string_view(node.attribute("orientation").value()) == "landscape";
    page.paper = node.attribute("paperSize").as_int();
    page.scale = node.attribute("scale").as_int(100);
    page.fitWide = node.attribute("fitToWidth").as_int(1);
    page.fitTall = node.attribute("fitToHeight").as_int(1);
    if (node.attribute("useFirstPageNumber").as_bool())
        page.firstPage = node.attribute("firstPageNumber").as_int();
    const auto is = [&](const char* name, std::string_view usual) {
        return node.attribute(name).as_string(usual.data()) == usual;
    };
    return is("pageOrder", "downThenOver") && is("cellComments", "none") &&
           is("errors", "displayed") && !node.attribute("blackAndWhite").as_bool() &&
           !node.attribute("draft").as_bool() && node.attribute("copies").as_int(1) == 1;
}

bool readOptions(PageSetup& page, const pugi::xml_node& node) {
    page.centerHorizontally = node.attribute("horizontalCentered").as_bool();
    page.centerVertically = node.attribute("verticalCentered").as_bool();
    page.printGridlines = node.attribute("gridLines").as_bool();
    page.printHeadings = node.attribute("headings").as_bool();
    return true;
}

bool readHeader(PageSetup& page, const pugi::xml_node& node) {
    page.header = child(node, "oddHeader").text().get();
    page.footer = child(node, "oddFooter").text().get();
    return !node.attribute("differentOddEven").as_bool() &&
           !node.attribute("differentFirst").as_bool() &&
           node.attribute("scaleWithDoc").as_bool(true) &&
           node.attribute("alignWithMargins").as_bool(true);
}

template <std::vector<int> PageSetup::*Breaks, int Last>
bool readBreaks(PageSetup& page, const pugi::xml_node& list) {
    constexpr std::size_t kMost = 1000; // Programs take 1023.
    std::vector<int>& breaks = page.*Breaks;
    for (const pugi::xml_node& node : list.children()) {
        const int id = node.attribute("id").as_int();
        if (breaks.size() == kMost) return false;
        if (id > 0 && id < Last) breaks.push_back(id);
    }
    return true;
}

} // namespace

bool readPage(PageSetup& page, std::string_view name, const pugi::xml_node& node) {
    static const std::map<std::string_view, bool (*)(PageSetup&, const pugi::xml_node&)> kElements =
        {{"pageMargins", readMargins},
         {"pageSetup", readSetup},
         {"printOptions", readOptions},
         {"headerFooter", readHeader},
         {"rowBreaks", readBreaks<&PageSetup::rowBreaks, kRows>},
         {"colBreaks", readBreaks<&PageSetup::columnBreaks, kColumns>}};
    const auto found = kElements.find(name);
    return found == kElements.end() || found->second(page, node);
}

} // namespace headless::excel
