#include "table_command.h"

#include <iostream>

#include "OrnBoard/tables.h"
#include "OrnBoard/tables_report.h"
#include "argument_text.h"
#include "open_drawing.h"
#include "table/grid_text.h"
#include "win/code_page.h"

namespace orn {
namespace {

board::TableFilter filterOf(const TableOptions& options) {
    board::TableFilter filter{.layers = namesIn(options.layers)};
    if (!options.window.empty()) {
        AcDbExtents2d window;
        window.addPoint({options.window[0], options.window[1]});
        window.addPoint({options.window[2], options.window[3]});
        filter.window = window;
    }
    return filter;
}

void print(const table::DrawnTables& tables, bool json) {
    if (!json) {
        std::cout << headless::toUtf8(board::tablesReport(tables).GetString());
        return;
    }
    std::vector<const CDrawGrid*> grids;
    for (const auto& table : tables)
        grids.push_back(table.get());
    std::cout << table::toJson(grids);
}

/// False when something failed; it has been said on standard error.
bool deliver(const table::DrawnTables& tables, const TableOptions& options) {
    if (tables.empty()) {
        std::cerr << "orn: " << options.drawing.string() << ": no table found\n";
        return false;
    }
    if (options.json || options.output.empty()) print(tables, options.json);
    if (options.output.empty()) return true;
    const CString problem = board::writeTables(tables, wide(options.output));
    if (!problem.IsEmpty()) std::cerr << "orn: " << headless::toUtf8(problem.GetString()) << '\n';
    return problem.IsEmpty();
}

} // namespace

CLI::App* declareTable(CLI::App& app, TableOptions& options) {
    CLI::App* table = app.add_subcommand("table", "Read the tables drawn in model space");
    table->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    CLI::Option* layers = table->add_option("--layers", options.layers,
                                            "Only these layers, joined by commas, any case");
    table->add_option("--window", options.window, "Only what lies between X1,Y1,X2,Y2")
        ->delimiter(',')
        ->expected(4)
        ->excludes(layers);
    table->add_option("-o,--output", options.output,
                      "Write this file (.xlsx, .csv, .json or .html; .xls and .ods need "
                      "LibreOffice)");
    table->add_flag("--json", options.json, "Print JSON");
    return table;
}

int runTable(const TableOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    const bool done = deliver(board::drawnTables(opened.database(), filterOf(options)), options);
    const int status = opened.finish();
    return done ? status : kFailure;
}

} // namespace orn
