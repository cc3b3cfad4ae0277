// How long saving a drawing takes, next to copying its file and to another library writing its
// model.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <vector>

#include <benchmark/benchmark.h>

#ifdef ORN_BENCH_DIME
#include <dime/Input.h>
#include <dime/Model.h>
#include <dime/Output.h>
#endif

#include "against.h"
#include "db/database.h"
#include "db/entity.h"
#include "db/object_pointer.h"
#include "db/residence.h"
#include "dxf/reader.h"
#include "dxf/writer.h"
#include "dxf_drawings.h"

namespace {

using std::filesystem::path;

constexpr std::size_t kEntities = 100'000;

const path& file() { return bench::drawing(bench::Content::kMixed, kEntities); }

path beside(const char* name) { return file().parent_path() / name; }

/// Reads and writes in large pieces and waits for the disk, as careful copying does.
void copyFile(const path& from, const path& to) {
    const int in = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    const int out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    std::vector<char> buffer(std::size_t{1} << 18);
    while (true) {
        const ssize_t got = ::read(in, buffer.data(), buffer.size());
        if (got <= 0 || ::write(out, buffer.data(), static_cast<std::size_t>(got)) != got) break;
    }
    ::fsync(out);
    ::close(in);
    ::close(out);
}

void recolour(AcDbEntity& entity) { entity.setColorIndex(3); }

void move(AcDbEntity& entity) {
    entity.transformBy(AcGeMatrix3d::translation(AcGeVector3d(1234.5, 99.25, 0.0)));
}

/// The drawing with one entity in `every` changed; none for 0.
struct Drawing {
    explicit Drawing(std::size_t every, void (*change)(AcDbEntity&) = recolour) {
        headless::DxfReadReport report;
        headless::readDxf(db, file(), report);
        std::size_t count = 0;
        for (const AcDbObjectId id : headless::Residence::residents(db)) {
            if (every == 0 || AcDbEntity::cast(headless::Residence::peek(id)) == nullptr) continue;
            if (++count % every != 0) continue;
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
            change(*entity);
        }
    }
    AcDbDatabase db{false, true};
};

void save(Drawing& drawing, const path& to) {
    if (!headless::writeDxf(drawing.db, to)) std::abort();
}

void untouchedAgainstCopy(benchmark::State& state) {
    Drawing drawing(0);
    bench::against(
        state, [&] { save(drawing, beside("saved.dxf")); },
        [] { copyFile(file(), beside("copy.dxf")); });
}
BENCHMARK(untouchedAgainstCopy)->UseManualTime()->Unit(benchmark::kMillisecond);

void hundredthAgainstUntouched(benchmark::State& state) {
    Drawing changed(100);
    Drawing untouched(0);
    bench::against(
        state, [&] { save(changed, beside("changed.dxf")); },
        [&] { save(untouched, beside("saved.dxf")); });
}
BENCHMARK(hundredthAgainstUntouched)->UseManualTime()->Unit(benchmark::kMillisecond);

#ifdef ORN_BENCH_DIME
void allAgainstDime(benchmark::State& state, void (*change)(AcDbEntity&)) {
    Drawing changed(1, change);
    dimeInput input;
    dimeModel model;
    if (!input.setFile(file().c_str()) || !model.read(&input)) {
        state.SkipWithError("the peer cannot read the drawing");
        return;
    }
    const auto writeModel = [&] {
        dimeOutput output;
        output.setFilename(beside("dime.dxf").c_str());
        model.write(&output);
    };
    bench::against(
        state, [&] { save(changed, beside("changed.dxf")); }, writeModel, kEntities);
}
BENCHMARK_CAPTURE(allAgainstDime, recoloured, recolour)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(allAgainstDime, moved, move)->UseManualTime()->Unit(benchmark::kMillisecond);
#endif

} // namespace

BENCHMARK_MAIN();
