#include "grid_files.h"

#include <algorithm>

#include "OrnCore/file_path.h"
#include "table/grid_text.h"
#include "table/grid_workbook.h"
#include "whole_file.h"

namespace board {
namespace {

CString endingOf(const CString& path) {
    const int dot = path.ReverseFind(L'.');
    CString ending = dot < 0 ? CString() : path.Mid(dot);
    return ending.MakeLower();
}

CString writeWorkbook(std::span<const CDrawGrid* const> grids, const CString& path) {
    constexpr int kMostColumns = 676; // what names of two letters reach
    const auto isTooWide = [](const CDrawGrid* grid) {
        return grid->GetColumnCount() - 1 > kMostColumns;
    };
    if (std::ranges::any_of(grids, isTooWide))
        return path + L": a sheet has room for 676 columns only";
    if (CString refusal = whyNotWritten(path); !refusal.IsEmpty()) return refusal;
    // The application has a folder of its own for other paths, and replaces a file as a whole.
    const auto absolute = std::filesystem::absolute(orncore::filePath(path));
    return table::writeWorkbook(grids, orncore::textOf(absolute))
               ? CString()
               : path + L": the spreadsheet was not written";
}

} // namespace

bool isWorkbook(const CString& path) {
    const CString ending = endingOf(path);
    return ending == L".xlsx" || ending == L".xls" || ending == L".ods";
}

CString writeGrids(std::span<const CDrawGrid* const> grids, const CString& path) {
    const CString ending = endingOf(path);
    if (isWorkbook(path)) return writeWorkbook(grids, path);
    if (ending == L".csv") return writeWhole(path, table::toCsv(grids));
    if (ending == L".json") return writeWhole(path, table::toJson(grids));
    if (ending == L".html") return writeWhole(path, table::toHtml(grids));
    return path + L": files end in .xlsx, .xls, .ods, .csv, .json or .html";
}

} // namespace board
