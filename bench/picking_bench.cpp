// Indexing a space of a million entities against Boost.Geometry's own bulk load of the same boxes,
// keeping the index up to date, and picks in that drawing once the index stands.
#include <memory>
#include <random>
#include <vector>

#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/geometry/strategies/strategies.hpp>

#include <dbents.h>
#include <dbmain.h>
#include <dbsymtb.h>

#include "against.h"
#include "db/block_memory.h"
#include "db/residence.h"
#include "ed/viewports.h"
#include "headless/session.h"
#include "layerpick/pick_layer.h"

namespace {

using headless::Residence;

constexpr int kSide = 1000; // lines along either side of the field
constexpr double kStep = 10.0;
constexpr double kPlace = 20'000.0; // where the references begin, beyond the lines
constexpr int kBlocks = 100;
constexpr int kNested = 99;

/// A million lines, and 10,000 references: 100 with 99 each inside.
class Drawing {
public:
    Drawing() {
        session_.newDrawing();
        std::mt19937 random(5);
        std::uniform_real_distribution<double> reach(-4.0, 4.0);
        for (int i = 0; i < kSide * kSide; ++i) {
            const AcGePoint3d start(i % kSide * kStep, i / kSide * kStep, 0.0);
            put(space(), std::make_unique<AcDbLine>(
                             start, start + AcGeVector3d(reach(random), reach(random), 0.0)));
        }
        addReferences();
        addWideBlock();
        headless::View view = headless::currentView(db());
        view.height = 900.0;
        headless::setCurrentView(db(), view);
    }

    AcDbDatabase& db() { return *session_.database(); }
    AcDbBlockTableRecord& space() {
        return *Residence::peek<AcDbBlockTableRecord>(db().modelSpaceId());
    }

private:
    static void put(AcDbBlockTableRecord& block, std::unique_ptr<AcDbEntity> entity) {
        entity->setDatabaseDefaults(block.database());
        Residence::admitEntity(block, std::move(entity));
    }
    AcDbBlockTableRecord& block(const std::wstring& name) {
        auto record = std::make_unique<AcDbBlockTableRecord>();
        record->setName(name.c_str());
        auto& table = *Residence::peek<AcDbSymbolTable>(db().blockTableId());
        const AcDbObjectId id = Residence::admitRecord(table, std::move(record));
        return *Residence::peek<AcDbBlockTableRecord>(id);
    }
    void addReferences() {
        AcDbBlockTableRecord& leaf = block(L"LEAF");
        for (int i = 0; i < 10; ++i)
            put(leaf, std::make_unique<AcDbLine>(AcGePoint3d(0.0, i * 10.0, 0.0),
                                                 AcGePoint3d(90.0, i * 10.0, 0.0)));
        for (int i = 0; i < kBlocks; ++i) {
            AcDbBlockTableRecord& middle = block(L"MIDDLE" + std::to_wstring(i));
            for (int k = 0; k < kNested; ++k)
                put(middle, std::make_unique<AcDbBlockReference>(
                                AcGePoint3d(k % 10 * 100.0, k / 10 * 100.0, 0.0), leaf.objectId()));
            put(space(), std::make_unique<AcDbBlockReference>(
                             AcGePoint3d(kPlace + i % 10 * 1000.0, i / 10 * 1000.0, 0.0),
                             middle.objectId()));
        }
    }

    /// All in one block instead.
    void addWideBlock() {
        AcDbBlockTableRecord& wide = block(L"WIDE");
        const AcDbObjectId leaf =
            Residence::peek<AcDbSymbolTable>(db().blockTableId())->findRecord(L"LEAF");
        for (int i = 0; i < kBlocks * (kNested + 1); ++i)
            put(wide, std::make_unique<AcDbBlockReference>(
                          AcGePoint3d(i % 100 * 100.0, i / 100 * 100.0, 0.0), leaf));
        put(space(), std::make_unique<AcDbBlockReference>(AcGePoint3d(3.0 * kPlace, 0.0, 0.0),
                                                          wide.objectId()));
    }

    headless::Session session_;
};

Drawing& drawing() {
    static Drawing made;
    return made;
}

using Point = boost::geometry::model::point<double, 3, boost::geometry::cs::cartesian>;
using Box = boost::geometry::model::box<Point>;
using Item = std::pair<Box, std::uint32_t>;
using Rtree = boost::geometry::index::rtree<Item, boost::geometry::index::quadratic<16>>;

std::vector<Item> boxes() {
    std::vector<Item> items;
    for (const AcDbObjectId id : drawing().space().entityIds()) {
        AcDbExtents box;
        Residence::peek<AcDbEntity>(id)->extentsOf(box);
        const AcGePoint3d low = box.minPoint();
        const AcGePoint3d high = box.maxPoint();
        items.push_back({{{low.x, low.y, low.z}, {high.x, high.y, high.z}},
                         static_cast<std::uint32_t>(items.size())});
    }
    return items;
}

void indexAgainstBulkLoad(benchmark::State& state) {
    const std::vector<Item> items = boxes();
    bench::against(
        state, [] { benchmark::DoNotOptimize(headless::EntityIndex(drawing().space())); },
        [&] { benchmark::DoNotOptimize(Rtree(items)); }, kSide * kSide);
}
BENCHMARK(indexAgainstBulkLoad)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void editAndAsk(benchmark::State& state) {
    AcDbBlockTableRecord& space = drawing().space();
    headless::EntityIndex& index = space.memory().index(space);
    headless::Extents3d box;
    box.add(AcGePoint3d(0.0, 0.0, 0.0));
    box.add(AcGePoint3d(50.0, 50.0, 0.0));
    std::size_t next = 0;
    for ([[maybe_unused]] auto round : state) {
        AcDbObjectPointer<AcDbEntity> line(space.entityIds()[next++ % 100'000], AcDb::kForWrite);
        line->transformBy(AcGeMatrix3d::translation(AcGeVector3d(0.1, 0.0, 0.0)));
        benchmark::DoNotOptimize(index.find(box));
    }
}
BENCHMARK(editAndAsk)->Unit(benchmark::kMicrosecond);

/// Picks on lines of the field, or inside references.
void pick(benchmark::State& state) {
    const bool inside = state.range(0) != 0;
    drawing();
    std::mt19937 random(9);
    std::uniform_int_distribution<int> cell(0, 99);
    const std::set<CString> excluded;
    int hits = 0;
    for ([[maybe_unused]] auto round : state) {
        const int i = cell(random);
        const int k = cell(random) % kNested;
        const AcGePoint3d point =
            inside ? AcGePoint3d(kPlace + i % 10 * 1000.0 + k % 10 * 100.0 + 45.0,
                                 i / 10 * 1000.0 + k / 10 * 100.0 + 30.0, 0.0)
                   : AcGePoint3d(i * kStep, k * kStep, 0.0);
        hits += kelmor::GetEntLayerByPt(point, excluded, 1, 0, 0).IsEmpty() ? 0 : 1;
    }
    state.counters["hits"] = static_cast<double>(hits) / static_cast<double>(state.iterations());
}
/// Inside a block that holds 10,000 references itself: all of them are looked at.
void pickInWideBlock(benchmark::State& state) {
    drawing();
    std::mt19937 random(9);
    std::uniform_int_distribution<int> cell(0, 99);
    const std::set<CString> excluded;
    for ([[maybe_unused]] auto round : state) {
        const AcGePoint3d point(3.0 * kPlace + cell(random) * 100.0 + 45.0,
                                cell(random) * 100.0 + 30.0, 0.0);
        benchmark::DoNotOptimize(kelmor::GetEntLayerByPt(point, excluded, 1, 0, 0));
    }
}
BENCHMARK(pickInWideBlock)->Unit(benchmark::kMicrosecond);

BENCHMARK(pick)->ArgName("inside")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
