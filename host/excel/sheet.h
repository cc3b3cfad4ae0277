// One sheet of a workbook: its cells and everything laid out over them.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "excel/area.h"
#include "excel/format_table.h"
#include "excel/runs.h"
#include "excel/sheet_rules.h"

namespace headless::excel {

/// "#DIV/0!" and its kind.
struct CellError {
    std::string text;

    bool operator==(const CellError&) const = default;
};

/// Nothing, a number (dates are days since 1899-12-30), a truth value, UTF-8 text or an error.
using CellValue = std::variant<std::monostate, double, bool, std::string, CellError>;

struct Cell {
    CellValue value;     ///< Of a formula: its last result, as far as one is known.
    std::string formula; ///< Without the equals sign; empty for none.
    FormatId format = kDefaultFormat;

    [[nodiscard]] bool hasContent() const {
        return !formula.empty() || !std::holds_alternative<std::monostate>(value);
    }
};

/// The place of a row or column among groups that can be folded.
struct OutlinePlace {
    int level = 0;       ///< How many groups it is in, 0 to 7.
    bool folded = false; ///< The group that it sums up is.

    bool operator==(const OutlinePlace&) const = default;
};

struct ColumnProperties {
    std::optional<double> width; ///< In characters of the default font; none is the usual width.
    bool hidden = false;
    FormatId format = kDefaultFormat;
    OutlinePlace outline;

    bool operator==(const ColumnProperties&) const = default;
};

struct RowProperties {
    std::optional<double> height; ///< Points; none is the usual height.
    bool hidden = false;
    std::optional<FormatId> format;
    OutlinePlace outline;

    bool operator==(const RowProperties&) const = default;
};

constexpr double kUsualWidth = 8.43;
constexpr double kUsualHeight = 15.0;

struct Comment {
    std::string text;
    std::string author;
    bool visible = false;

    bool operator==(const Comment&) const = default;
};

/// A picture that hangs at a cell. Lengths in points.
struct Picture {
    int id = 0; ///< Of its own in the sheet, as long as it is open.
    std::string name;
    std::string bytes; ///< The file: PNG, JPEG, GIF or BMP.
    int row = 1;
    int column = 1;
    double leftInCell = 0.0;
    double topInCell = 0.0;
    double width = 0.0;
    double height = 0.0;
    bool lockAspectRatio = true;
};

struct PageSetup {
    bool landscape = false;
    int paper = 0; ///< The platform's paper number, 9 is A4; 0 leaves it to the printer.
    // Inches.
    double leftMargin = 0.7;
    double rightMargin = 0.7;
    double topMargin = 0.75;
    double bottomMargin = 0.75;
    double headerMargin = 0.3;
    double footerMargin = 0.3;
    std::string header; ///< With "&L", "&C", "&R" before its three parts.
    std::string footer;
    int scale = 100; ///< Percent.
    bool fitToPages = false;
    int fitWide = 1; ///< Pages; 0 for as many as it takes.
    int fitTall = 1;
    bool centerHorizontally = false;
    bool centerVertically = false;
    bool printGridlines = false;
    bool printHeadings = false;
    int firstPage = 0; ///< 0 counts on from the sheet before.
    std::optional<Area> printArea;
    std::optional<Area> titleRows;
    std::optional<Area> titleColumns;
    std::vector<int> rowBreaks;    ///< The last rows of pages that users ended,
    std::vector<int> columnBreaks; ///< and the last columns.

    bool operator==(const PageSetup&) const = default;
};

struct SheetView {
    int frozenRows = 0;
    int frozenColumns = 0;
    int zoom = 100; ///< Percent.
    bool gridlines = true;

    bool operator==(const SheetView&) const = default;
};

/// Very hidden sheets are shown by programs only, not by users.
enum class Visibility { kVisible, kHidden, kVeryHidden };

class Sheet {
public:
    using Row = std::map<int, Cell>;

    std::string name;
    Visibility visibility = Visibility::kVisible;
    Color tabColor;
    PageSetup page;
    SheetView view;
    std::optional<Area> autoFilter;
    std::vector<Area> merges;
    std::map<std::pair<int, int>, Comment> comments; ///< By row and column.
    std::vector<Picture> pictures;
    std::vector<Link> links;
    std::vector<InputRule> inputRules;
    std::optional<Protection> protection;
    QuietAreas quiet;
    bool sumsBelow = true; ///< Rows that sum up groups are below them,
    bool sumsRight = true; ///< columns to their right.
    Runs<ColumnProperties> columns{kColumns};
    Runs<RowProperties> rows{kRows};

    [[nodiscard]] const std::map<int, Row>& cells() const { return cells_; }
    [[nodiscard]] const Cell* find(int row, int column) const;
    /// The cell, made with the format of its row or column when it is not there.
    Cell& at(int row, int column);
    /// What a cell looks like, whether it is there or not.
    [[nodiscard]] FormatId formatAt(int row, int column) const;
    void erase(int row, int column);

    /// Calls `visit(row, column, cell)` for the cells that are there, row by row.
    template <class Visit>
    void forEach(const Area& area, Visit visit) {
        for (auto row = cells_.lower_bound(area.top);
             row != cells_.end() && row->first <= area.bottom; ++row) {
            auto& cells = row->second;
            for (auto cell = cells.lower_bound(area.left);
                 cell != cells.end() && cell->first <= area.right; ++cell) {
                visit(row->first, cell->first, cell->second);
            }
        }
    }

    /// From A1 to the last cell in use, as the used range of the platform; nothing when empty.
    [[nodiscard]] std::optional<Area> usedArea() const;
    /// The merged area that holds the cell.
    [[nodiscard]] const Area* mergeAt(int row, int column) const;
    /// Joins the cells; only the first keeps its contents.
    void merge(const Area& area);
    /// Undoes the merges that touch the area.
    void unmerge(const Area& area);

    /// Moves the cells of the area and all beyond it down (or right) by its height (or width). What
    /// would leave the sheet must be empty: false and nothing done otherwise.
    bool insertCells(const Area& area, bool down);
    /// Takes the area out and moves what is beyond it up (or left).
    void deleteCells(const Area& area, bool up);

    /// Width and height in points.
    [[nodiscard]] double columnPoints(int column) const;
    [[nodiscard]] double rowPoints(int row) const;
    /// Distance of a column's left edge, or a row's top edge, from the sheet's.
    [[nodiscard]] double leftOf(int column) const;
    [[nodiscard]] double topOf(int row) const;

    int nextPictureId = 1;
    /// Columns that are to be as wide as their contents when the widths are needed next: fitting
    /// each time that it is asked for would make long tables slow.
    std::set<int> columnsToFit;

private:
    struct Shift;
    void shift(const Shift& by);

    /// The row and the cell used last, as most work goes cell by cell. A copy of the sheet starts
    /// without.
    struct LastUsed {
        int row = 0;
        Row* cells = nullptr;
        int column = 0;
        Cell* cell = nullptr;

        LastUsed() = default;
        LastUsed(const LastUsed&) {}
        LastUsed& operator=(const LastUsed&) {
            forget();
            return *this;
        }
        void forget() { row = column = 0; }
    };
    /// A row's cells, made when there are none.
    Row& rowAt(int row);

    std::map<int, Row> cells_;
    LastUsed last_;
};

/// Screen pixels of a column width in characters, at 96 to the inch.
[[nodiscard]] int widthPixels(double characters);
/// The column width that so many pixels make, to the hundredth.
[[nodiscard]] double widthOfPixels(int pixels);

} // namespace headless::excel
