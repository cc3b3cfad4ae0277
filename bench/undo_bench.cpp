// Undoing a change of 100,000 lines, against a plain copy of as many values of their size; and what
// recording costs the change itself.
#include <array>
#include <vector>

#include "against.h"
#include "db/database.h"
#include "db/line.h"
#include "db/state.h"
#include "db/undo_journal.h"

namespace {

constexpr int kLines = 100'000;

class Drawing {
public:
    Drawing() {
        AcDbObjectPointer<AcDbBlockTableRecord> space(db_.modelSpaceId(), AcDb::kForWrite);
        for (int i = 0; i < kLines; ++i) {
            auto* const line = new AcDbLine({1.0 * i, 0, 0}, {1.0 * i, 10, 0});
            space->appendAcDbEntity(line);
            ids_.push_back(line->objectId());
            line->close();
        }
    }

    AcDbDatabase& database() { return db_; }
    headless::UndoJournal& journal() { return *db_.undoJournal(); }
    void changeAll() {
        for (const AcDbObjectId id : ids_)
            AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite)->setColorIndex(++colour_ % 256);
    }

private:
    headless::DbState state_;
    AcDbDatabase db_;
    std::vector<AcDbObjectId> ids_;
    Adesk::UInt16 colour_ = 0;
};

void undoLines(benchmark::State& state) {
    Drawing drawing;
    drawing.database().disableUndoRecording(false);
    drawing.changeAll();
    const std::vector<std::array<char, sizeof(AcDbLine)>> values(kLines);
    bool undone = false;
    bench::against(
        state,
        [&] {
            undone = !undone;
            if (undone)
                drawing.journal().undo(1);
            else
                drawing.journal().redo();
        },
        [&] {
            const auto copy = values;
            benchmark::DoNotOptimize(copy.data());
        },
        kLines);
}
BENCHMARK(undoLines)->UseManualTime()->Unit(benchmark::kMillisecond);

void changeRecordedLines(benchmark::State& state) {
    Drawing recorded;
    recorded.database().disableUndoRecording(false);
    Drawing unrecorded;
    bench::against(
        state,
        [&] {
            recorded.journal().clear();
            recorded.changeAll();
        },
        [&] { unrecorded.changeAll(); }, kLines);
}
BENCHMARK(changeRecordedLines)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
