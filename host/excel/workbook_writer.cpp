#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <unistd.h>

#include <xlsxwriter.h>

#include "excel/image_info.h"
#include "excel/old_palette.h"
#include "excel/workbook_error.h"
#include "excel/workbook_files.h"
#include "win/replace_file.h"

namespace headless::excel {
namespace {

constexpr double kPointsOfPixel = 0.75;

void check(lxw_error error) {
    if (error != LXW_NO_ERROR) throw WorkbookError(lxw_strerror(error));
}

lxw_row_t rowIndex(int row) { return static_cast<lxw_row_t>(row - 1); }
lxw_col_t columnIndex(int column) { return static_cast<lxw_col_t>(column - 1); }

/// The library takes 0x00RRGGBB, and a bit beyond it for black, since 0 is none.
lxw_color_t fileColor(std::uint32_t color) {
    const std::uint32_t rgb = (color & 0xFFU) << 16 | (color & 0xFF00U) | (color & 0xFF0000U) >> 16;
    return rgb == 0 ? static_cast<lxw_color_t>(LXW_COLOR_BLACK) : rgb;
}

// --- Formats ---

void setFont(lxw_format* format, const Font& font) {
    format_set_font_name(format, font.name.c_str());
    format_set_font_size(format, font.size);
    if (font.bold) format_set_bold(format);
    if (font.italic) format_set_italic(format);
    if (font.strikeout) format_set_font_strikeout(format);
    format_set_underline(format, static_cast<std::uint8_t>(font.underline));
    if (font.script != Script::kNormal) {
        format_set_font_script(format, static_cast<std::uint8_t>(font.script));
    }
    if (font.color) format_set_font_color(format, fileColor(*font.color));
    // Not the theme's font any more, which would win over the name.
    if (font.name != "Calibri") format_set_font_scheme(format, "");
}

void setFill(lxw_format* format, const Fill& fill) {
    format_set_pattern(format, static_cast<std::uint8_t>(fill.pattern));
    const bool solid = fill.pattern == Pattern::kSolid;
    const Color& strokes = solid ? fill.color : fill.patternColor;
    if (strokes) format_set_fg_color(format, fileColor(*strokes));
    if (!solid && fill.color) format_set_bg_color(format, fileColor(*fill.color));
}

void setBorders(lxw_format* format, const Borders& borders) {
    struct Side {
        const BorderLine& line;
        void (*setStyle)(lxw_format*, std::uint8_t);
        void (*setColor)(lxw_format*, lxw_color_t);
    };
    const Side sides[] = {
        {borders.left, format_set_left, format_set_left_color},
        {borders.right, format_set_right, format_set_right_color},
        {borders.top, format_set_top, format_set_top_color},
        {borders.bottom, format_set_bottom, format_set_bottom_color},
        {borders.diagonal, format_set_diag_border, format_set_diag_color},
    };
    for (const Side& side : sides) {
        if (side.line.style == LineStyle::kNone) continue;
        side.setStyle(format, static_cast<std::uint8_t>(side.line.style));
        if (side.line.color) side.setColor(format, fileColor(*side.line.color));
    }
    const int diagonals = (borders.diagonalUp ? LXW_DIAGONAL_BORDER_UP : 0) |
                          (borders.diagonalDown ? LXW_DIAGONAL_BORDER_DOWN : 0);
    if (diagonals != 0) format_set_diag_type(format, static_cast<std::uint8_t>(diagonals));
}

void setAlignment(lxw_format* format, const Alignment& alignment) {
    static constexpr std::array kVertical = {LXW_ALIGN_VERTICAL_BOTTOM, LXW_ALIGN_VERTICAL_TOP,
                                             LXW_ALIGN_VERTICAL_CENTER, LXW_ALIGN_VERTICAL_JUSTIFY,
                                             LXW_ALIGN_VERTICAL_DISTRIBUTED};
    // The horizontal ones are numbered as the library numbers them.
    if (alignment.horizontal != Horizontal::kGeneral) {
        format_set_align(format, static_cast<std::uint8_t>(alignment.horizontal));
    }
    if (alignment.vertical != Vertical::kBottom) {
        format_set_align(format, static_cast<std::uint8_t>(
                                     kVertical[static_cast<std::size_t>(alignment.vertical)]));
    }
    constexpr std::int16_t kLibrarysStackedText = 270;
    if (alignment.rotation == kStackedText) {
        format_set_rotation(format, kLibrarysStackedText);
    } else if (alignment.rotation != 0) {
        format_set_rotation(format, static_cast<std::int16_t>(alignment.rotation));
    }
    if (alignment.indent > 0) {
        format_set_indent(format, static_cast<std::uint8_t>(alignment.indent));
    }
    if (alignment.wrap) format_set_text_wrap(format);
    if (alignment.shrink) format_set_shrink(format);
}

void setAll(lxw_format* target, const CellFormat& format) {
    if (format.numberFormat != "General") {
        format_set_num_format(target, format.numberFormat.c_str());
    }
    setFont(target, format.font);
    setFill(target, format.fill);
    setBorders(target, format.borders);
    setAlignment(target, format.alignment);
    if (!format.locked) format_set_unlocked(target);
    if (format.formulaHidden) format_set_hidden(target);
}

// --- The file being made ---

struct Free {
    void operator()(lxw_workbook* workbook) const { lxw_workbook_free(workbook); }
};

/// A file of our own that goes when done.
class ScratchFile {
public:
    ScratchFile() : path_((std::filesystem::temp_directory_path() / "workbook-XXXXXX").string()) {
        const int file = mkstemp(path_.data());
        if (file < 0) throw WorkbookError("no temporary file can be made");
        close(file);
    }
    ~ScratchFile() { std::remove(path_.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string bytes() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string path_;
};

class Writer {
public:
    Writer(const Workbook& source, const std::string& path)
        : source_(source), target_(workbook_new(path.c_str())) {
        if (target_ == nullptr) throw WorkbookError("no temporary file can be made");
        // What has no format of its own follows the library's first one.
        setAll(STAILQ_FIRST(target_->formats), source.formats.at(kDefaultFormat));
        formats_.push_back(STAILQ_FIRST(target_->formats));
    }

    void write() {
        std::vector<lxw_worksheet*> sheets;
        for (const auto& sheet : source_.sheets) {
            lxw_worksheet* made = workbook_add_worksheet(target_.get(), sheet->name.c_str());
            if (made == nullptr) throw WorkbookError("a sheet cannot be named " + sheet->name);
            sheets.push_back(made);
        }
        for (std::size_t i = 0; i < sheets.size(); ++i)
            writeSheet(*source_.sheets[i], sheets[i]);
        worksheet_activate(sheets[std::min(source_.activeSheet, sheets.size() - 1)]);
        for (const DefinedName& name : source_.names)
            writeName(name);
        writeProperties();
        check(workbook_close(target_.release()));
    }

private:
    lxw_format* format(FormatId id) {
        if (id >= formats_.size()) formats_.resize(id + 1, nullptr);
        if (formats_[id] == nullptr) {
            formats_[id] = workbook_add_format(target_.get());
            setAll(formats_[id], source_.formats.at(id));
        }
        return formats_[id];
    }

    void writeName(const DefinedName& name) {
        const std::string prefix =
            name.sheet == nullptr ? "" : quotedSheetName(name.sheet->name) + "!";
        check(workbook_define_name(target_.get(), (prefix + name.name).c_str(),
                                   ("=" + name.refersTo).c_str()));
    }

    void writeProperties() {
        DocumentProperties own = source_.properties;
        lxw_doc_properties properties{};
        properties.title = own.title.data();
        properties.subject = own.subject.data();
        properties.author = own.author.data();
        properties.keywords = own.keywords.data();
        properties.comments = own.comments.data();
        properties.category = own.category.data();
        if (!(own == DocumentProperties{})) {
            check(workbook_set_properties(target_.get(), &properties));
        }
    }

    void writeSheet(const Sheet& sheet, lxw_worksheet* target) {
        writeColumns(sheet, target);
        writeRows(sheet, target);
        for (const Area& merged : sheet.merges) {
            check(worksheet_merge_range(target, rowIndex(merged.top), columnIndex(merged.left),
                                        rowIndex(merged.bottom), columnIndex(merged.right), "",
                                        nullptr));
        }
        for (const auto& [row, cells] : sheet.cells()) {
            for (const auto& [column, cell] : cells)
                writeCell(sheet, target, row, column, cell);
        }
        for (const auto& [place, comment] : sheet.comments)
            writeComment(target, place, comment);
        for (const Picture& picture : sheet.pictures)
            writePicture(target, picture);
        writeView(sheet, target);
        writePage(sheet.page, target);
    }

    void writeColumns(const Sheet& sheet, lxw_worksheet* target) {
        sheet.columns.forEach([&](int first, int last, const ColumnProperties& column) {
            lxw_row_col_options options{};
            options.hidden = column.hidden;
            lxw_format* own = column.format == kDefaultFormat ? nullptr : format(column.format);
            check(worksheet_set_column_opt(target, columnIndex(first), columnIndex(last),
                                           column.width.value_or(LXW_DEF_COL_WIDTH), own,
                                           &options));
        });
    }

    void writeRows(const Sheet& sheet, lxw_worksheet* target) {
        const auto used = sheet.usedArea();
        sheet.rows.forEach([&](int first, int last, const RowProperties& row) {
            // Rows without end are the sheet's default; those in use are written all the same.
            if (last == kRows) {
                if (row.height) worksheet_set_default_row(target, *row.height, LXW_FALSE);
                last = std::max(first, used ? used->bottom : 0);
            }
            lxw_row_col_options options{};
            options.hidden = row.hidden;
            lxw_format* own = row.format ? format(*row.format) : nullptr;
            for (int number = first; number <= last; ++number) {
                check(worksheet_set_row_opt(target, rowIndex(number),
                                            row.height.value_or(LXW_DEF_ROW_HEIGHT), own,
                                            &options));
            }
        });
    }

    void writeCell(const Sheet& sheet, lxw_worksheet* target, int row, int column,
                   const Cell& cell) {
        const bool plain = cell.format == kDefaultFormat && !sheet.rows.at(row).format &&
                           sheet.columns.at(column).format == kDefaultFormat;
        lxw_format* own = plain ? nullptr : format(cell.format);
        const lxw_row_t r = rowIndex(row);
        const lxw_col_t c = columnIndex(column);
        if (!cell.formula.empty()) {
            writeFormula(target, r, c, own, cell);
        } else if (const auto* number = std::get_if<double>(&cell.value)) {
            check(worksheet_write_number(target, r, c, *number, own));
        } else if (const auto* truth = std::get_if<bool>(&cell.value)) {
            check(worksheet_write_boolean(target, r, c, *truth, own));
        } else if (const auto* text = std::get_if<std::string>(&cell.value)) {
            check(worksheet_write_string(target, r, c, text->c_str(), own));
        } else if (const auto* error = std::get_if<CellError>(&cell.value)) {
            // The library has no errors of their own; a formula that is one shows the same.
            const std::string formula = "=" + error->text;
            check(worksheet_write_formula_str(target, r, c, formula.c_str(), own,
                                              error->text.c_str()));
        } else {
            check(worksheet_write_blank(target, r, c, own));
        }
    }

    static void writeFormula(lxw_worksheet* target, lxw_row_t row, lxw_col_t column,
                             lxw_format* format, const Cell& cell) {
        const std::string formula = "=" + cell.formula;
        const auto* text = std::get_if<std::string>(&cell.value);
        const auto* error = std::get_if<CellError>(&cell.value);
        if (text != nullptr || error != nullptr) {
            const std::string& result = text != nullptr ? *text : error->text;
            check(worksheet_write_formula_str(target, row, column, formula.c_str(), format,
                                              result.c_str()));
            return;
        }
        const auto* number = std::get_if<double>(&cell.value);
        const auto* truth = std::get_if<bool>(&cell.value);
        const double result = number != nullptr ? *number : truth != nullptr && *truth ? 1.0 : 0.0;
        check(worksheet_write_formula_num(target, row, column, formula.c_str(), format, result));
    }

    static void writeComment(lxw_worksheet* target, std::pair<int, int> place,
                             const Comment& comment) {
        std::string author = comment.author;
        lxw_comment_options options{};
        options.author = author.data();
        options.visible = static_cast<std::uint8_t>(comment.visible ? LXW_COMMENT_DISPLAY_VISIBLE
                                                                    : LXW_COMMENT_DISPLAY_HIDDEN);
        check(worksheet_write_comment_opt(target, rowIndex(place.first), columnIndex(place.second),
                                          comment.text.c_str(), &options));
    }

    static void writePicture(lxw_worksheet* target, const Picture& picture) {
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
            target, rowIndex(picture.row), columnIndex(picture.column),
            reinterpret_cast<const unsigned char*>(picture.bytes.data()), picture.bytes.size(),
            &options));
    }

    static void writeView(const Sheet& sheet, lxw_worksheet* target) {
        const SheetView& view = sheet.view;
        if (view.frozenRows > 0 || view.frozenColumns > 0) {
            worksheet_freeze_panes(target, static_cast<lxw_row_t>(view.frozenRows),
                                   static_cast<lxw_col_t>(view.frozenColumns));
        }
        worksheet_set_zoom(target, static_cast<std::uint16_t>(view.zoom));
        const int lines = (view.gridlines ? LXW_SHOW_SCREEN_GRIDLINES : LXW_HIDE_ALL_GRIDLINES) |
                          (sheet.page.printGridlines ? LXW_SHOW_PRINT_GRIDLINES : 0);
        worksheet_gridlines(target, static_cast<std::uint8_t>(lines));
        if (sheet.hidden) worksheet_hide(target);
        if (sheet.tabColor) worksheet_set_tab_color(target, fileColor(*sheet.tabColor));
        if (const auto& area = sheet.autoFilter) {
            check(worksheet_autofilter(target, rowIndex(area->top), columnIndex(area->left),
                                       rowIndex(area->bottom), columnIndex(area->right)));
        }
    }

    static void writePage(const PageSetup& page, lxw_worksheet* target) {
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
            check(worksheet_repeat_columns(target, columnIndex(area->left),
                                           columnIndex(area->right)));
        }
    }

    const Workbook& source_;
    std::unique_ptr<lxw_workbook, Free> target_;
    std::vector<lxw_format*> formats_; // By id; null for one not used yet.
};

} // namespace

void writeWorkbook(const Workbook& workbook, const std::string& path) {
    try {
        const ScratchFile scratch;
        Writer(workbook, scratch.path()).write();
        struct stat status {};
        const int error = replaceFile(path, scratch.bytes(), Durability::kProcess, status);
        if (error != 0) throw WorkbookError(std::strerror(error));
    } catch (const WorkbookError& error) {
        throw WorkbookError(path + " cannot be written: " + error.what());
    }
}

} // namespace headless::excel
