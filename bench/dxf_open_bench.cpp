// How long opening a drawing takes, next to other libraries and to a bare walk over its groups.
//
// Counters: entities a second, seconds, and for our own reader the memory it takes for each byte of
// the file, the bytes of the file included. Each measurement of memory runs in a process of its
// own, because a process never tells what a part of it once needed.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

#ifdef ORN_BENCH_DIME
#include <dime/Input.h>
#include <dime/Model.h>
#endif
#ifdef ORN_BENCH_DXFLIB
#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>
#endif

#include "db/database.h"
#include "dxf/reader.h"
#include "dxf/record_scanner.h"
#include "dxf_drawings.h"

namespace {

using bench::Content;
using std::filesystem::path;

bool openWithOurs(const path& file) {
    AcDbDatabase db(false, true);
    headless::DxfReadReport report;
    return static_cast<bool>(headless::readDxf(db, file, report));
}

bool scanTags(const path& file) {
    std::string refusal;
    const auto input = headless::DxfInput::open(file, refusal);
    if (input == nullptr) return false;
    headless::DxfReadReport report;
    const auto scanner = headless::RecordScanner::make(input->bytes(), report);
    headless::ScannedRecord record;
    std::size_t groups = 0;
    while (scanner->next(record))
        groups += record.tags.size();
    benchmark::DoNotOptimize(groups);
    return scanner->failure().empty();
}

#ifdef ORN_BENCH_DIME
bool openWithDime(const path& file) {
    dimeInput input;
    dimeModel model;
    return input.setFile(file.c_str()) && model.read(&input);
}
#endif

#ifdef ORN_BENCH_DXFLIB
bool openWithDxflib(const path& file) {
    DL_Dxf dxf;
    DL_CreationAdapter adapter; // Keeps nothing: the library's best case.
    return dxf.in(file.string(), &adapter);
}
#endif

using Opener = bool (*)(const path&);

constexpr const char* kOpenOnly = "--open-only";

/// Peak memory of this process so far, in bytes.
double peakOfThisProcess() {
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0.0;
    while (status >> word) {
        if (word == "VmHWM:") status >> kilobytes;
    }
    return kilobytes * 1024.0;
}

/// Peak memory of a fresh process that opens the file with our reader, or opens nothing. It tells
/// by itself: what the system notes of a child counts the parent's memory as well.
double peakBytes(const std::string& file) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string command = "'" + program + "' " + kOpenOnly + " '" + file + "'";
    std::FILE* const output = ::popen(command.c_str(), "r");
    double bytes = 0.0;
    if (output == nullptr) return bytes;
    if (std::fscanf(output, "%lf", &bytes) != 1) bytes = 0.0;
    ::pclose(output);
    return bytes;
}

void open(benchmark::State& state, Opener opener, Content content, bool measureMemory) {
    const auto entities = static_cast<std::size_t>(state.range(0));
    const path& file = bench::drawing(content, entities);
    for (auto _ : state) {
        if (!opener(file)) state.SkipWithError("cannot be opened");
    }
    const auto size = static_cast<double>(std::filesystem::file_size(file));
    state.counters["file_MB"] = size / 1e6;
    state.SetItemsProcessed(state.iterations() * state.range(0));
    if (measureMemory) {
        state.counters["memory_per_byte"] = (peakBytes(file.string()) - peakBytes("")) / size;
    }
}

void enter(const char* name, Opener opener, bool measureMemory, bool millions) {
    constexpr std::int64_t kMany = 100'000;
    for (const auto& [content, what] :
         {std::pair{Content::kMixed, "/mixed"}, std::pair{Content::kClosedPolylines, "/boards"}}) {
        auto* const entry = benchmark::RegisterBenchmark((name + std::string(what)).c_str(), open,
                                                         opener, content, measureMemory);
        entry->Arg(kMany)->Unit(benchmark::kMillisecond)->UseRealTime();
        if (millions) entry->Arg(10 * kMany);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == kOpenOnly) {
        if (*argv[2] != '\0' && !openWithOurs(argv[2])) return 1;
        std::printf("%.0f\n", peakOfThisProcess());
        return 0;
    }
    enter("scan", scanTags, false, true);
    enter("orn", openWithOurs, true, true);
#ifdef ORN_BENCH_DIME
    enter("libdime", openWithDime, false, false);
#endif
#ifdef ORN_BENCH_DXFLIB
    enter("libdxflib", openWithDxflib, false, false);
#endif
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
