#include "excel/page_reader.h"

#include "excel/zip_package.h"

namespace headless::excel {

void readPage(PageSetup& page, std::string_view name, const pugi::xml_node& node) {
    if (name == "pageMargins") {
        page.leftMargin = node.attribute("left").as_double(page.leftMargin);
        page.rightMargin = node.attribute("right").as_double(page.rightMargin);
        page.topMargin = node.attribute("top").as_double(page.topMargin);
        page.bottomMargin = node.attribute("bottom").as_double(page.bottomMargin);
        page.headerMargin = node.attribute("header").as_double(page.headerMargin);
        page.footerMargin = node.attribute("footer").as_double(page.footerMargin);
    } else if (name == "pageSetup") {
        page.landscape = std::string_view(node.attribute("orientation").value()) == "landscape";
        page.paper = node.attribute("paperSize").as_int();
        page.scale = node.attribute("scale").as_int(100);
        page.fitWide = node.attribute("fitToWidth").as_int(1);
        page.fitTall = node.attribute("fitToHeight").as_int(1);
        if (node.attribute("useFirstPageNumber").as_bool()) {
            page.firstPage = node.attribute("firstPageNumber").as_int();
        }
    } else if (name == "printOptions") {
        page.centerHorizontally = node.attribute("horizontalCentered").as_bool();
        page.centerVertically = node.attribute("verticalCentered").as_bool();
        page.printGridlines = node.attribute("gridLines").as_bool();
        page.printHeadings = node.attribute("headings").as_bool();
    } else if (name == "headerFooter") {
        page.header = child(node, "oddHeader").text().get();
        page.footer = child(node, "oddFooter").text().get();
    }
}

} // namespace headless::excel
