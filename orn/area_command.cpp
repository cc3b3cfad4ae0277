#include "area_command.h"

#include <iostream>

#include "OrnBoard/measure.h"
#include "OrnBoard/measure_sheets.h"
#include "argument_text.h"
#include "measurement_output.h"
#include "open_drawing.h"
#include "win/code_page.h"

namespace orn {
namespace {

board::SideRange sideRange(const std::optional<double>& above,
                           const std::optional<double>& atMost) {
    board::SideRange range;
    range.above = above.value_or(range.above);
    range.atMost = atMost.value_or(range.atMost);
    return range;
}

board::MeasureFilter filterOf(const AreaOptions& options) {
    return {.layers = namesIn(options.layers),
            .a = sideRange(options.minA, options.maxA),
            .b = sideRange(options.minB, options.maxB)};
}

void print(std::ostream& out, const board::Measurement& measurement, Format format) {
    switch (format) {
    case Format::kJson:
        return printJson(out, measurement);
    case Format::kCsv:
        return printCsv(out, measurement);
    case Format::kTable:
        return printTable(out, measurement);
    }
}

/// False when it was not written; it has been said on standard error.
bool writeWorkbook(const board::Measurement& measurement, const std::string& path) {
    const CString problem = board::writeMeasurement(measurement, wide(path));
    if (!problem.IsEmpty()) std::cerr << "orn: " << headless::toUtf8(problem.GetString()) << '\n';
    return problem.IsEmpty();
}

} // namespace

CLI::App* declareArea(CLI::App& app, AreaOptions& options) {
    CLI::App* area = app.add_subcommand("area", "Measure polylines and circles of model space");
    area->add_option("FILE", options.drawing, "Drawing (DXF)")->required();
    area->add_option("--layers", options.layers, "Only these layers, joined by commas, any case");
    area->add_option("--min-a", options.minA, "First side longer than this, mm");
    area->add_option("--max-a", options.maxA, "First side at most this long, mm");
    area->add_option("--min-b", options.minB, "Second side longer than this, mm");
    area->add_option("--max-b", options.maxB, "Second side at most this long, mm");
    CLI::Option* json = area->add_flag("--json", options.json, "Print JSON");
    area->add_flag("--csv", options.csv, "Print CSV")->excludes(json);
    area->add_option("-o,--output", options.output,
                     "Write this workbook (.xlsx; .xls and .ods need LibreOffice)");
    return area;
}

int runArea(const AreaOptions& options) {
    OpenDrawing opened(options.drawing);
    if (!opened) return kFailure;
    const board::Measurement measurement =
        board::measureBoards(opened.database(), filterOf(options));
    const bool printsToo = options.output.empty() || options.format() != Format::kTable;
    if (printsToo) print(std::cout, measurement, options.format());
    const bool done = options.output.empty() || writeWorkbook(measurement, options.output);
    const int status = opened.finish();
    return done ? status : kFailure;
}

} // namespace orn
