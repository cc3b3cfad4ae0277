// Highlighting 100,000 entities and taking that back, against opening each for writing and keeping
// its id in a set.
#include <algorithm>
#include <random>
#include <set>

#include <dbents.h>
#include <dbmain.h>
#include <dbsymtb.h>

#include "against.h"
#include "headless/session.h"
#include "interact/ent_highlight.h"

namespace {

constexpr int kLines = 100'000;

class Drawing {
public:
    Drawing() {
        session_.newDrawing();
        AcDbObjectPointer<AcDbBlockTableRecord> space(session_.database()->modelSpaceId(),
                                                      AcDb::kForWrite);
        for (int i = 0; i < kLines; ++i) {
            auto* const line = new AcDbLine({1.0 * i, 0, 0}, {1.0 * i, 10, 0});
            space->appendAcDbEntity(line);
            ids_.append(line->objectId());
            line->close();
        }
        std::shuffle(ids_.asArrayPtr(), ids_.asArrayPtr() + kLines, std::mt19937(3));
    }

    const AcDbObjectIdArray& ids() const { return ids_; }

private:
    headless::Session session_;
    AcDbObjectIdArray ids_;
};

/// Opens each entity for writing and closes it.
template <class Ids>
void openEach(const Ids& ids) {
    for (const AcDbObjectId& id : ids) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForWrite) == Acad::eOk) entity->close();
    }
}

void highlightLines(benchmark::State& state) {
    const Drawing drawing;
    bench::against(
        state,
        [&] {
            CEntHighlight shown;
            shown.AddEnt(drawing.ids());
            benchmark::DoNotOptimize(shown.IsNull());
        },
        [&] {
            std::set<AcDbObjectId> kept(drawing.ids().begin(), drawing.ids().end());
            openEach(kept);
            openEach(kept);
            benchmark::DoNotOptimize(kept.size());
        },
        kLines);
}
BENCHMARK(highlightLines)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
