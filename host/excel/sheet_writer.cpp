#include "excel/sheet_writer.h"

#include <algorithm>
#include <cmath>

#include "excel/image_info.h"
#include "excel/library_calls.h"
#include "excel/page_writer.h"
#include "excel/rule_writer.h"

namespace headless::excel {
namespace {

constexpr double kPointsOfPixel = 0.75;

class SheetWriter {
public:
    SheetWriter(const Sheet& sheet, lxw_worksheet* target, LibraryFormats& formats)
        : sheet_(sheet), target_(target), formats_(formats) {}

    void write() {
        writeColumns();
        writeRows();
        for (const Area& merged : sheet_.merges) {
            check(worksheet_merge_range(target_, rowIndex(merged.top), columnIndex(merged.left),
                                        rowIndex(merged.bottom), columnIndex(merged.right), "",
                                        nullptr));
        }
        for (const Link& link : sheet_.links)
            writeLink(link);
        for (const auto& [row, cells] : sheet_.cells()) {
            for (const auto& [column, cell] : cells)
                writeCell(row, column, cell);
        }
        for (const InputRule& rule : sheet_.inputRules)
            writeInputRule(rule, target_);
        if (sheet_.protection) writeProtection(*sheet_.protection, target_);
        writeQuietAreas(sheet_.quiet, target_);
        for (const auto& [place, comment] : sheet_.comments)
            writeComment(place, comment);
        for (const Picture& picture : sheet_.pictures)
            writePicture(picture);
        writeView();
        writePage(sheet_.page, target_);
    }

private:
    void writeColumns() {
        sheet_.columns.forEach([&](int first, int last, const ColumnProperties& column) {
            lxw_row_col_options options{};
            options.hidden = column.hidden;
            options.level = static_cast<std::uint8_t>(column.outline.level);
            options.collapsed = column.outline.folded;
            lxw_format* own =
                column.format == kDefaultFormat ? nullptr : formats_.at(column.format);
            check(worksheet_set_column_opt(target_, columnIndex(first), columnIndex(last),
                                           column.width.value_or(LXW_DEF_COL_WIDTH), own,
                                           &options));
        });
    }

    void writeRows() {
        const auto used = sheet_.usedArea();
        sheet_.rows.forEach([&](int first, int last, const RowProperties& row) {
            // Rows without end are the sheet's default; those in use are written all the same.
            if (last == kRows) {
                if (row.height) worksheet_set_default_row(target_, *row.height, LXW_FALSE);
                last = std::max(first, used ? used->bottom : 0);
            }
            lxw_row_col_options options{};
            options.hidden = row.hidden;
            options.level = static_cast<std::uint8_t>(row.outline.level);
            options.collapsed = row.outline.folded;
            lxw_format* own = row.format ? formats_.at(*row.format) : nullptr;
            for (int number = first; number <= last; ++number) {
                check(worksheet_set_row_opt(target_, rowIndex(number),
                                            row.height.value_or(LXW_DEF_ROW_HEIGHT), own,
                                            &options));
            }
        });
    }

    void writeCell(int row, int column, const Cell& cell) {
        const bool plain = cell.format == kDefaultFormat && !sheet_.rows.at(row).format &&
                           sheet_.columns.at(column).format == kDefaultFormat;
        lxw_format* own = plain ? nullptr : formats_.at(cell.format);
        const lxw_row_t r = rowIndex(row);
        const lxw_col_t c = columnIndex(column);
        if (!cell.formula.empty()) {
            writeFormula(r, c, own, cell);
        } else if (const auto* number = std::get_if<double>(&cell.value)) {
            check(worksheet_write_number(target_, r, c, *number, own));
        } else if (const auto* truth = std::get_if<bool>(&cell.value)) {
            check(worksheet_write_boolean(target_, r, c, *truth, own));
        } else if (const auto* text = std::get_if<std::string>(&cell.value)) {
            check(worksheet_write_string(target_, r, c, text->c_str(), own));
        } else if (const auto* error = std::get_if<CellError>(&cell.value)) {
            // The library has no errors of their own; a formula that is one shows the same.
            const std::string formula = "=" + error->text;
            check(worksheet_write_formula_str(target_, r, c, formula.c_str(), own,
                                              error->text.c_str()));
        } else {
            check(worksheet_write_blank(target_, r, c, own));
        }
    }

    void writeFormula(lxw_row_t row, lxw_col_t column, lxw_format* format, const Cell& cell) {
        const std::string formula = "=" + cell.formula;
        const auto* text = std::get_if<std::string>(&cell.value);
        const auto* error = std::get_if<CellError>(&cell.value);
        if (text != nullptr || error != nullptr) {
            const std::string& result = text != nullptr ? *text : error->text;
            check(worksheet_write_formula_str(target_, row, column, formula.c_str(), format,
                                              result.c_str()));
            return;
        }
        const auto* number = std::get_if<double>(&cell.value);
        const auto* truth = std::get_if<bool>(&cell.value);
        const double result = number != nullptr ? *number : truth != nullptr && *truth ? 1.0 : 0.0;
        check(worksheet_write_formula_num(target_, row, column, formula.c_str(), format, result));
    }

    /// The library writes a text into each cell that has a link; cells write theirs over it.
    void writeLink(const Link& link) {
        const std::string target = libraryTarget(link);
        const char* tip = link.tip.empty() ? nullptr : link.tip.c_str();
        for (int row = link.area.top; row <= link.area.bottom; ++row) {
            for (int column = link.area.left; column <= link.area.right; ++column) {
                lxw_format* own = formats_.at(sheet_.formatAt(row, column));
                const lxw_row_t r = rowIndex(row);
                const lxw_col_t c = columnIndex(column);
                check(worksheet_write_url_opt(target_, r, c, target.c_str(), own, " ", tip));
                check(worksheet_write_blank(target_, r, c, own));
            }
        }
    }

    void writeComment(std::pair<int, int> place, const Comment& comment) {
        std::string author = comment.author;
        lxw_comment_options options{};
        options.author = author.data();
        options.visible = static_cast<std::uint8_t>(comment.visible ? LXW_COMMENT_DISPLAY_VISIBLE
                                                                    : LXW_COMMENT_DISPLAY_HIDDEN);
        check(worksheet_write_comment_opt(target_, rowIndex(place.first), columnIndex(place.second),
                                          comment.text.c_str(), &options));
    }

    void writePicture(const Picture& picture) {
        const auto info = imageInfo(picture.bytes);
        if (!info) throw WorkbookError("a picture is of no known kind");
        std::string name = picture.name;
        lxw_image_options options{};
        options.x_offset =
            static_cast<std::int32_t>(std::lround(picture.leftInCell / kPointsOfPixel));
        options.y_offset =
            static_cast<std::int32_t>(std::lround(picture.topInCell / kPointsOfPixel));
        options.x_scale = picture.width / info->widthPoints();
        options.y_scale = picture.height / info->heightPoints();
        options.description = name.data();
        check(worksheet_insert_image_buffer_opt(
            target_, rowIndex(picture.row), columnIndex(picture.column),
            reinterpret_cast<const unsigned char*>(picture.bytes.data()), picture.bytes.size(),
            &options));
    }

    void writeView() {
        const SheetView& view = sheet_.view;
        if (view.frozenRows > 0 || view.frozenColumns > 0) {
            worksheet_freeze_panes(target_, static_cast<lxw_row_t>(view.frozenRows),
                                   static_cast<lxw_col_t>(view.frozenColumns));
        }
        worksheet_set_zoom(target_, static_cast<std::uint16_t>(view.zoom));
        const int lines = (view.gridlines ? LXW_SHOW_SCREEN_GRIDLINES : LXW_HIDE_ALL_GRIDLINES) |
                          (sheet_.page.printGridlines ? LXW_SHOW_PRINT_GRIDLINES : 0);
        worksheet_gridlines(target_, static_cast<std::uint8_t>(lines));
        if (sheet_.visibility != Visibility::kVisible) worksheet_hide(target_);
        worksheet_outline_settings(target_, LXW_TRUE, sheet_.sumsBelow, sheet_.sumsRight,
                                   LXW_FALSE);
        if (sheet_.tabColor) worksheet_set_tab_color(target_, libraryColor(*sheet_.tabColor));
        if (const auto& area = sheet_.autoFilter) {
            check(worksheet_autofilter(target_, rowIndex(area->top), columnIndex(area->left),
                                       rowIndex(area->bottom), columnIndex(area->right)));
        }
    }

    const Sheet& sheet_;
    lxw_worksheet* target_;
    LibraryFormats& formats_;
};

} // namespace

void writeSheet(const Sheet& sheet, lxw_worksheet* target, LibraryFormats& formats) {
    SheetWriter(sheet, target, formats).write();
}

} // namespace headless::excel
