// Drives the spreadsheet application: workbooks, sheets, cells and how they look.
//
//     CExcelOP excel;
//     if (excel.Create(1, 0) == 0) return; // the user has been told
//     excel.SetCellValue(1, 1, COleVariant(L"Board"));
//     excel.SetCellFontColor(L"A1", L"B1", RGB(255, 0, 0));
//     excel.SaveWorkbookAs(path);
//     excel.Close();
#pragma once

#include <afxdisp.h>

namespace excel {
enum Member : DISPID;
}

/// One application with its current workbook, sheet and range. All operations answer 1 when done
/// and 0 when not, in which case the user has been told why in a message box; nothing is thrown.
///
/// Values of the formatting operations are the application's own: xlCenter is -4108, colours are
/// COLORREF, heights are points and widths characters.
class AFX_EXT_CLASS CExcelOP {
public:
    // The application, from the outside in. Each step needs the one before.

    int CreateApp();
    int CreateWorkbooks();
    int CreateWorkbook();
    int CreateWorksheets();
    /// @param index  from 1.
    int CreateWorksheet(short index);
    /// Adds a sheet behind sheet `n - 1`; the current sheet stays.
    int AddWorksheet(short n);
    void ShowApp(int visible);
    /// All of it: a new workbook and its sheet of that number.
    int Create(short sheetIndex, int visible);
    int OpenWorkbook(CString path);
    /// All of it: an existing workbook and its sheet of that number.
    int Open(CString path, short sheetIndex, int visible);

    int SaveWorkbook();
    int SaveWorkbookAs(CString path);
    /// The same, over a file that is there without asking.
    int SaveWorkbookOver(CString path);
    /// Closes the workbook without saving; whether another one is open, which is then the current.
    int CloseWorkbook();
    /// Ends the application.
    void Close();

    long GetSheetsCount();
    /// Makes a sheet the current one, silently.
    int SetActiveSheet(short index);
    int SetSheetName(short index, CString name);
    /// Takes a sheet away without asking, whatever it holds; the last one stays.
    int DeleteSheet(short index);
    /// Makes the cells between two corners the current range.
    int GetCellRange(CString cell1, CString cell2);

    // Names of cells.

    /// "A" to "Z" for 1 to 26, "Z" for 0 as well, nothing for others.
    static CString GetColumnName(int n);
    /// "AZ1" for column 52 and row 1. From column 677 on the names are no names of columns.
    static CString GetCellName(int col, int row);

    // Contents.

    int SetCellValue(CString cell, VARIANT value);
    int SetCellValue(int row, int col, VARIANT value);
    int SetCellFormula(CString cell1, CString cell2, CString formula);
    int SetCellComment(CString cell1, CString cell2, CString text);
    /// Integers as "%d", other numbers as "%f", dates as "2024-01-31 23:59:00", truth values as
    /// "TRUE" and "FALSE"; nothing for empty cells and errors.
    CString GetCellValue(CString cell);
    CString GetCellValue(int row, int col);
    /// Pushes the cells of the range down.
    int InsertRow(CString cell1, CString cell2);
    /// Puts a picture over the range, whose columns and rows get that size before.
    int InsertPic(CString cell1, CString cell2, CString path, double colWidth, double rowHeight);

    // Looks of the cells between two corners.

    int SetNumFormat(CString cell1, CString cell2, CString format);
    /// Of the whole sheet.
    int SetNumFormat(CString format);
    int SetCellHAlignment(CString cell1, CString cell2, long alignment, long indent);
    int SetCellVAlignment(CString cell1, CString cell2, long alignment);
    int SetCellTextControl(CString cell1, CString cell2, int wrap, int shrink, int merge);
    int SetCellOrientation(CString cell1, CString cell2, long degrees);
    int SetRowHeight(CString cell1, CString cell2, double height);
    int SetColumnWidth(CString cell1, CString cell2, double width);
    int SetColumnAutoFit(CString cell1, CString cell2);
    /// Fits the columns too.
    int SetCellFont(CString cell1, CString cell2, CString name, CString style, double size,
                    long underline, int strikethrough, long color, int superscript, int subscript);
    int SetCellFontName(CString cell1, CString cell2, CString name);
    int SetCellFontStyle(CString cell1, CString cell2, CString style);
    int SetCellFontSize(CString cell1, CString cell2, double size);
    int SetCellFontColor(CString cell1, CString cell2, long color);
    int SetCellFontUnderline(CString cell1, CString cell2, long underline);
    int SetCellFontStrikethrough(CString cell1, CString cell2, int strikethrough);
    int SetCellFontSubSuper(CString cell1, CString cell2, int superscript, int subscript);
    /// @param which  xlEdgeLeft 7, xlEdgeTop 8, xlEdgeBottom 9, xlEdgeRight 10, ...
    int SetCellBorder(CString cell1, CString cell2, long which, long lineStyle, long weight,
                      long color);
    /// All edges of all cells.
    int SetCellBorders(CString cell1, CString cell2, long lineStyle, long weight, long color);
    int SetCellBorderAround(CString cell1, CString cell2, long lineStyle, long weight, long color);
    int SetCellPartern(CString cell1, CString cell2, long pattern, long color);
    int MergeCell(CString cell1, CString cell2, int merge);
    /// Value, sizes, alignment, font colour and borders of one cell.
    int SetCellValueRHCWColorAlognmentBorders(int row, int col, VARIANT value, double rowHeight,
                                              double colWidth, long horizontal, long vertical,
                                              long indent, long fontColor, long lineStyle,
                                              long weight, long borderColor);

private:
    template <class Calls>
    int onRange(const CString& cell1, const CString& cell2, Calls calls);
    template <class Calls>
    int onFont(const CString& cell1, const CString& cell2, Calls calls);
    template <class Value>
    int setOnRange(const CString& cell1, const CString& cell2, excel::Member member,
                   const Value& value);
    template <class Value>
    int setOnFont(const CString& cell1, const CString& cell2, excel::Member member,
                  const Value& value);

    COleDispatchDriver m_app;
    COleDispatchDriver m_workbooks;
    COleDispatchDriver m_workbook;
    COleDispatchDriver m_worksheets;
    COleDispatchDriver m_worksheet;
    COleDispatchDriver m_range;
    // What belongs to the range, for as long as an operation works on it.
    COleDispatchDriver m_part;
    COleDispatchDriver m_item;
};
