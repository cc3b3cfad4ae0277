// Reading drawn tables against the same procedure on plain lists, and as tables grow.
#include <functional>
#include <memory>

#include <dbents.h>
#include <dbmain.h>
#include <dbsymtb.h>

#include "against.h"
#include "headless/session.h"
#include "table/grid_to_cad_table.h"
#include "table/plain_table.h"

namespace {

constexpr double kWidth = 1000.0; // of a column
constexpr double kHeight = 300.0; // of a row

struct Size {
    int rows, columns;
    int piecesAcross, piecesDown; // of one cell's edges; 0: whole lines
    int texts;
};

plain::Line level(double from, double to, double y) { return {{from, y, 0}, {to, y, 0}}; }
plain::Line upright(double from, double to, double x) { return {{x, from, 0}, {x, to, 0}}; }

std::vector<plain::Line> ruling(const Size& size) {
    std::vector<plain::Line> lines;
    const auto rule = [&lines](int cells, double cell, int pieces,
                               const std::function<plain::Line(double, double)>& line) {
        const int count = pieces == 0 ? 1 : cells * pieces;
        const double length = cells * cell / count;
        for (int i = 0; i < count; ++i)
            lines.push_back(line(i * length, (i + 1) * length));
    };
    for (int row = 0; row <= size.rows; ++row)
        rule(size.columns, kWidth, size.piecesAcross,
             [&](double from, double to) { return level(from, to, row * kHeight); });
    for (int column = 0; column <= size.columns; ++column)
        rule(size.rows, kHeight, size.piecesDown,
             [&](double from, double to) { return upright(from, to, column * kWidth); });
    return lines;
}

std::vector<plain::Text> cellTexts(const Size& size) {
    std::vector<plain::Text> texts;
    for (int i = 0; i < size.texts; ++i) {
        const int row = i / size.columns % size.rows;
        const int column = i % size.columns;
        texts.push_back({.text = std::to_wstring(i).c_str(),
                         .position = {column * kWidth + 100, row * kHeight + 80, 0},
                         .height = 100});
    }
    return texts;
}

/// The same table in a drawing.
class Drawing {
public:
    explicit Drawing(const Size& size) {
        session_.newDrawing();
        AcDbBlockTableRecord* space = nullptr;
        acdbOpenObject(space, session_.database()->currentSpaceId(), AcDb::kForWrite);
        const auto add = [&](AcDbEntity* entity) {
            AcDbObjectId id;
            space->appendAcDbEntity(id, entity);
            entity->close();
            ids_.append(id);
        };
        for (const plain::Line& line : ruling(size))
            add(new AcDbLine(line.start, line.end));
        for (const plain::Text& text : cellTexts(size))
            add(new AcDbText(text.position, text.text, AcDbObjectId::kNull, text.height));
        space->close();
    }

    void read() const {
        AcArray<AcDbObjectId> ids = ids_;
        CGridToCadTable table;
        benchmark::DoNotOptimize(table.AnalyseTable(ids));
    }

private:
    headless::Session session_;
    AcArray<AcDbObjectId> ids_;
};

void readTable(benchmark::State& state, const Size& size) {
    const Drawing drawing(size);
    for ([[maybe_unused]] auto round : state)
        drawing.read();
}
BENCHMARK_CAPTURE(readTable, wholeLines, Size{200, 100, 0, 0, 20'000})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readTable, shortPieces, Size{200, 100, 3, 2, 20'000})
    ->Unit(benchmark::kMillisecond);

/// A quarter of the table above, then doubled in both directions, thrice.
void readGrowingTable(benchmark::State& state) {
    const int times = static_cast<int>(state.range(0));
    const Size size{50 * times, 25 * times, 3, 2, 1250 * times * times};
    const Drawing drawing(size);
    for ([[maybe_unused]] auto round : state)
        drawing.read();
    state.SetComplexityN(times * times);
}
BENCHMARK(readGrowingTable)
    ->RangeMultiplier(2)
    ->Range(1, 8)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);

void readAgainstPlainLists(benchmark::State& state) {
    const Size size{200, 50, 1, 1, 1000};
    const Drawing drawing(size);
    const std::vector<plain::Line> lines = ruling(size);
    const std::vector<plain::Text> texts = cellTexts(size);
    bench::against(
        state, [&] { drawing.read(); },
        [&] {
            plain::Table table;
            benchmark::DoNotOptimize(plain::analyseTable(lines, texts, table));
        });
}
BENCHMARK(readAgainstPlainLists)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
