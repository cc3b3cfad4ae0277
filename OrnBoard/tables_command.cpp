#include "tables_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "asked.h"
#include "tables.h"
#include "tables_report.h"

namespace board {
namespace {

/// Everything for Enter alone. Nothing when the user cancelled.
std::optional<TableFilter> askedFilter() {
    const auto scope = askedKeyword(L"\nTables in [All/Window] <All>: ", L"All Window");
    if (!scope) return std::nullopt;
    if (*scope != L"Window") return TableFilter();
    const auto first = askedPoint(L"\nFirst corner: ");
    if (!first) return std::nullopt;
    const auto second = askedPoint(L"\nOpposite corner: ");
    if (!second) return std::nullopt;
    AcDbExtents2d window;
    window.addPoint({first->x, first->y});
    window.addPoint({second->x, second->y});
    return TableFilter{.window = window};
}

} // namespace

void tablesCommand() {
    const auto filter = askedFilter();
    if (!filter) return;
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    const table::DrawnTables tables = drawnTables(db, *filter);
    acutPrintf(L"\n%s", tablesReport(tables).GetString());
    if (tables.empty()) return;

    const auto path = askedText(L"\nFile to write (.xlsx, .csv, .json or .html) <none>: ");
    if (!path || path->IsEmpty()) return;
    const CString problem = writeTables(tables, *path);
    acutPrintf(L"\n%s",
               problem.IsEmpty() ? (*path + L" written.").GetString() : problem.GetString());
}

} // namespace board
