#include "excel/page_writer.h"

#include "excel/library_calls.h"

namespace headless::excel {

void writePage(const PageSetup& page, lxw_worksheet* target) {
    if (page.landscape) worksheet_set_landscape(target);
    worksheet_set_paper(target, static_cast<std::uint8_t>(page.paper));
    worksheet_set_margins(target, page.leftMargin, page.rightMargin, page.topMargin,
                          page.bottomMargin);
    const PageSetup usual;
    lxw_header_footer_options margin{};
    if (page.header != usual.header || page.headerMargin != usual.headerMargin) {
        margin.margin = page.headerMargin;
        check(worksheet_set_header_opt(target, page.header.c_str(), &margin));
    }
    if (page.footer != usual.footer || page.footerMargin != usual.footerMargin) {
        margin.margin = page.footerMargin;
        check(worksheet_set_footer_opt(target, page.footer.c_str(), &margin));
    }
    if (page.fitToPages) {
        worksheet_fit_to_pages(target, static_cast<std::uint16_t>(page.fitWide),
                               static_cast<std::uint16_t>(page.fitTall));
    } else {
        worksheet_set_print_scale(target, static_cast<std::uint16_t>(page.scale));
    }
    if (page.centerHorizontally) worksheet_center_horizontally(target);
    if (page.centerVertically) worksheet_center_vertically(target);
    if (page.printHeadings) worksheet_print_row_col_headers(target);
    if (!page.rowBreaks.empty()) {
        std::vector<lxw_row_t> breaks(page.rowBreaks.begin(), page.rowBreaks.end());
        breaks.push_back(0); // ends the list
        check(worksheet_set_h_pagebreaks(target, breaks.data()));
    }
    if (!page.columnBreaks.empty()) {
        std::vector<lxw_col_t> breaks;
        for (const int column : page.columnBreaks)
            breaks.push_back(static_cast<lxw_col_t>(column));
        breaks.push_back(0);
        check(worksheet_set_v_pagebreaks(target, breaks.data()));
    }
    if (page.firstPage > 0) {
        worksheet_set_start_page(target, static_cast<std::uint16_t>(page.firstPage));
    }
    if (const auto& area = page.printArea) {
        check(worksheet_print_area(target, rowIndex(area->top), columnIndex(area->left),
                                   rowIndex(area->bottom), columnIndex(area->right)));
    }
    if (const auto& area = page.titleRows) {
        check(worksheet_repeat_rows(target, rowIndex(area->top), rowIndex(area->bottom)));
    }
    if (const auto& area = page.titleColumns) {
        check(worksheet_repeat_columns(target, columnIndex(area->left), columnIndex(area->right)));
    }
}

} // namespace headless::excel
