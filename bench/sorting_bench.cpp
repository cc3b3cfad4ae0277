// Sorting 100,000 outlines in reading order by their ids, with their extents noted first or as they
// are, against sorting their boxes as values by the same comparisons.
#include <algorithm>
#include <random>
#include <vector>

#include <dbmain.h>
#include <dbpl.h>
#include <dbsymtb.h>

#include "against.h"
#include "geometry/extent_order.h"
#include "headless/session.h"

namespace {

constexpr int kColumns = 400;
constexpr int kOutlines = 100'000;

/// Boards in rows, in no order.
class Boards {
public:
    Boards() {
        session_.newDrawing();
        AcDbObjectPointer<AcDbBlockTableRecord> space(session_.database()->modelSpaceId(),
                                                      AcDb::kForWrite);
        std::mt19937 random(11);
        std::uniform_real_distribution<double> stray(0.0, 0.05);
        for (int i = 0; i < kOutlines; ++i) {
            const double x = i % kColumns * 1200.0 + stray(random);
            const double y = i / kColumns * 3400.0 + stray(random);
            auto* const board = new AcDbPolyline(4);
            unsigned corner = 0;
            for (const AcGePoint2d& at :
                 {AcGePoint2d(x, y), AcGePoint2d(x + 1180.0, y),
                  AcGePoint2d(x + 1180.0, y + 3300.0), AcGePoint2d(x, y + 3300.0)})
                board->addVertexAt(corner++, at);
            board->setClosed(Adesk::kTrue);
            space->appendAcDbEntity(board);
            ids_.push_back(board->objectId());
            board->close();
        }
        std::shuffle(ids_.begin(), ids_.end(), random);
    }

    const std::vector<AcDbObjectId>& ids() const { return ids_; }
    std::vector<AcDbExtents> boxes() const {
        std::vector<AcDbExtents> all(ids_.size());
        for (std::size_t i = 0; i < ids_.size(); ++i)
            AcDbObjectPointer<AcDbEntity>(ids_[i], AcDb::kForRead)->getGeomExtents(all[i]);
        return all;
    }

private:
    headless::Session session_;
    std::vector<AcDbObjectId> ids_;
};

void sortOutlines(benchmark::State& state) {
    const Boards boards;
    const std::vector<AcDbExtents> boxes = boards.boxes();
    SortPline::nSortMethod = 3;
    bench::against(
        state,
        [&] {
            std::vector<AcDbObjectId> sorted = boards.ids();
            for (const AcDbObjectId& id : sorted)
                if (state.range(0) != 0) NoteExtentLess(id);
            std::stable_sort(sorted.begin(), sorted.end(), SortPline());
            InitExtentLess();
            benchmark::DoNotOptimize(sorted.data());
        },
        [&] {
            std::vector<AcDbExtents> sorted = boxes;
            std::stable_sort(
                sorted.begin(), sorted.end(), [](const AcDbExtents& a, const AcDbExtents& b) {
                    return ExtLineEqual(a, b) ? ExtColumnLess(a, b) : ExtLineLess(a, b);
                });
            benchmark::DoNotOptimize(sorted.data());
        },
        kOutlines);
}
BENCHMARK(sortOutlines)
    ->ArgName("noted")
    ->Arg(1)
    ->Arg(0)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
