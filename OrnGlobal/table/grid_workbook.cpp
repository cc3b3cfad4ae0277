#include "table/grid_workbook.h"

#include <algorithm>

#include <dbents.h>

#include "table/excel_op.h"
#include "table/sheet_layout.h"

namespace table {
namespace {

// Constants of the application.
constexpr long kLeft = -4131;
constexpr long kCenter = -4108;
constexpr long kRight = -4152;
constexpr long kTop = -4160;
constexpr long kBottom = -4107;
constexpr long kContinuous = 1;
constexpr long kThin = 2;

/// Ends the application with its scope.
class Application {
public:
    Application() : runs_(excel_.Create(1, 0) == 1) {}
    ~Application() {
        if (!runs_) return;
        excel_.CloseWorkbook();
        excel_.Close();
    }
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    explicit operator bool() const noexcept { return runs_; }
    CExcelOP& excel() noexcept { return excel_; }

private:
    CExcelOP excel_;
    bool runs_;
};

long horizontalPlace(int mode) {
    switch (mode) {
    case AcDb::kTextCenter:
    case AcDb::kTextMid:
        return kCenter;
    case AcDb::kTextRight:
        return kRight;
    default:
        return kLeft;
    }
}

long verticalPlace(const GridCell& cell) {
    if (cell.horizontal == AcDb::kTextMid || cell.vertical == AcDb::kTextVertMid) return kCenter;
    return cell.vertical == AcDb::kTextTop ? kTop : kBottom;
}

/// Columns are measured in digits of the default font, seven pixels each and five beside them.
double characters(double points) {
    constexpr double kPixelsPerPoint = 96.0 / 72.0;
    constexpr double kWidest = 255.0;
    return std::clamp((points * kPixelsPerPoint - 5.0) / 7.0, 0.1, kWidest);
}

double rowPoints(double points) {
    constexpr double kHighest = 409.0;
    return std::clamp(points, 1.0, kHighest);
}

/// Shows a number with the decimals that it was written with.
CString numberFormat(const CString& text) {
    const int point = text.Find(L'.');
    return point < 0 ? CString(L"0") : L"0." + CString(L'0', text.GetLength() - point - 1);
}

/// 0x00BBGGRR, as the application has colours.
long sheetColor(unsigned color) {
    return static_cast<long>((color & 0xFFU) << 16U | (color & 0xFF00U) | color >> 16U);
}

class SheetWriter {
public:
    SheetWriter(CExcelOP& excel, const CDrawGrid& grid)
        : excel_(excel), grid_(grid), layout_(grid) {}

    void write() {
        const CString last = nameOf(grid_.GetRowCount() - 1, grid_.GetColumnCount() - 1);
        excel_.SetNumFormat(L"A1", last, L"@"); // a text stays one, whatever it looks like
        excel_.SetCellFontSize(L"A1", last, SheetLayout::kTextPoints);
        excel_.SetCellVAlignment(L"A1", last, kCenter);
        excel_.SetCellBorders(L"A1", last, kContinuous, kThin, 0);
        for (int column = 1; column < grid_.GetColumnCount(); ++column)
            excel_.SetColumnWidth(nameOf(1, column), nameOf(1, column),
                                  characters(layout_.width(column)));
        for (int row = 1; row < grid_.GetRowCount(); ++row) {
            excel_.SetRowHeight(nameOf(row, 1), nameOf(row, 1), rowPoints(layout_.height(row)));
            for (int column = 1; column < grid_.GetColumnCount(); ++column)
                writeCell(row, column);
        }
    }

private:
    static CString nameOf(int row, int column) { return CExcelOP::GetCellName(column, row); }

    void writeCell(int row, int column) {
        const CellSpan& span = layout_.span(row, column);
        const CString name = nameOf(row, column);
        if (span.moreColumns > 0 || span.moreRows > 0)
            excel_.MergeCell(name, nameOf(row + span.moreRows, column + span.moreColumns), 1);
        const GridCell& cell = grid_.GetCell(row, column);
        if (span.isCovered || cell.text.IsEmpty()) return;
        writeValue(name, cell);
        if (cell.text.Find(L'\n') >= 0) showLines(row, column, span);
        excel_.SetCellHAlignment(name, name, horizontalPlace(cell.horizontal), 0);
        if (const long place = verticalPlace(cell); place != kCenter)
            excel_.SetCellVAlignment(name, name, place);
        if (const double size = layout_.fontSize(cell); size != SheetLayout::kTextPoints)
            excel_.SetCellFontSize(name, name, size);
        if (const unsigned color = paperColor(cell.color); color != 0)
            excel_.SetCellFontColor(name, name, sheetColor(color));
    }

    void writeValue(const CString& name, const GridCell& cell) {
        const auto number = cell.isName ? std::nullopt : numberIn(cell.text);
        if (number) {
            excel_.SetNumFormat(name, name, numberFormat(cell.text));
            excel_.SetCellValue(name, COleVariant(*number));
        } else {
            excel_.SetCellValue(name, COleVariant(cell.text));
        }
    }

    /// Lets a cell show all its lines.
    void showLines(int row, int column, const CellSpan& span) {
        const bool isMerged = span.moreColumns > 0 || span.moreRows > 0;
        excel_.SetCellTextControl(nameOf(row, column),
                                  nameOf(row + span.moreRows, column + span.moreColumns), 1, 0,
                                  isMerged ? 1 : 0);
    }

    CExcelOP& excel_;
    const CDrawGrid& grid_;
    SheetLayout layout_;
};

/// Makes the sheet of that number, counted from 1, the current one.
bool goToSheet(CExcelOP& excel, short number) {
    if (excel.GetSheetsCount() < number && excel.AddWorksheet(number) == 0) return false;
    CString name;
    name.Format(L"Table %d", static_cast<int>(number));
    return excel.SetActiveSheet(number) == 1 && excel.SetSheetName(number, name) == 1;
}

} // namespace

bool writeWorkbook(std::span<const CDrawGrid* const> grids, const CString& path) {
    Application application;
    if (!application) return false;
    CExcelOP& excel = application.excel();
    short number = 0;
    for (const CDrawGrid* grid : grids) {
        if (!goToSheet(excel, ++number)) return false;
        SheetWriter(excel, *grid).write();
    }
    // Users see their tables, not the empty sheets of a new workbook.
    while (excel.GetSheetsCount() > number)
        if (excel.DeleteSheet(static_cast<short>(number + 1)) == 0) break;
    excel.SetActiveSheet(1);
    return excel.SaveWorkbookOver(path) == 1;
}

} // namespace table
