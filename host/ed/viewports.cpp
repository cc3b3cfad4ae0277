#include "ed/viewports.h"

#include <algorithm>

#include "db/block_table.h"
#include "db/residence.h"
#include "db/view_tables.h"
#include "db/viewport.h"
#include "win/casing.h"

namespace headless {
namespace {

/// The resident behind the id unless it is erased.
template <class T>
const T* living(AcDbObjectId id) {
    return id.isErased() ? nullptr : Residence::peek<T>(id);
}

std::vector<AcDbObjectId> viewportsOn(AcDbObjectId sheet) {
    std::vector<AcDbObjectId> result;
    const auto* block = Residence::peek<AcDbBlockTableRecord>(sheet);
    if (block == nullptr) return result;
    std::ranges::copy_if(block->entityIds(), std::back_inserter(result),
                         [](AcDbObjectId id) { return living<AcDbViewport>(id) != nullptr; });
    return result;
}

short fileNumber(AcDbObjectId id) { return Residence::peek<AcDbViewport>(id)->fileNumber(); }

/// Shows the sheet's limits.
View freshSheetView(const AcDbDatabase& db) {
    const DrawingSettings& settings = db.settings();
    const AcGeVector2d size = settings.plimmax - settings.plimmin;
    View view;
    view.center = settings.plimmin + size / 2.0;
    view.height = size.y;
    makeUsable(view);
    return view;
}

Acad::ErrorStatus addSheetViewport(AcDbDatabase& db, const View& view) {
    AcDbObjectPointer<AcDbBlockTableRecord> sheet(currentSheet(db), AcDb::kForWrite);
    if (sheet.openStatus() != Acad::eOk) return sheet.openStatus();
    auto viewport = std::make_unique<AcDbViewport>();
    viewport->setDatabaseDefaults(&db);
    viewport->setFileNumber(kSheetNumber);
    const View whole = freshSheetView(db);
    viewport->setCenterPoint(AcGePoint3d(whole.center.x, whole.center.y, 0.0));
    viewport->setHeight(whole.height);
    viewport->setWidth(db.settings().plimmax.x - db.settings().plimmin.x);
    viewport->setView(view);
    const Acad::ErrorStatus added = sheet->appendAcDbEntity(viewport.get());
    if (added == Acad::eOk) viewport.release()->close();
    return added;
}

template <class T>
Acad::ErrorStatus giveView(AcDbObjectId id, const View& view) {
    // A viewport on a locked layer still shows what the user wants to see.
    AcDbObjectPointer<T> object;
    const Acad::ErrorStatus opened = object.open(id, AcDb::kForWrite, false, true);
    return opened == Acad::eOk ? object->setView(view) : opened;
}

std::vector<NumberedViewport> tiles(const AcDbDatabase& db) {
    std::vector<NumberedViewport> result;
    const auto* table = Residence::peek<AcDbViewportTable>(db.viewportTableId());
    if (table == nullptr) return result;
    short next = kFirstViewport;
    for (const AcDbObjectId id : table->recordIds()) {
        const auto* record = living<AcDbViewportTableRecord>(id);
        if (record != nullptr && equalNoCase(record->nameOf(), L"*Active"))
            result.push_back({next++, id});
    }
    return result;
}

/// The viewports on a sheet in its order, without its own.
std::vector<NumberedViewport> floatingViewports(AcDbObjectId sheet) {
    constexpr short kNone = 0;
    std::vector<NumberedViewport> result;
    const auto isTaken = [&](short number) {
        return std::ranges::find(result, number, &NumberedViewport::number) != result.end();
    };
    const AcDbObjectId own = sheetViewport(sheet);
    for (const AcDbObjectId id : viewportsOn(sheet)) {
        if (id == own) continue;
        const short number = fileNumber(id);
        result.push_back({number < kFirstViewport || isTaken(number) ? kNone : number, id});
    }
    short next = kFirstViewport;
    for (NumberedViewport& viewport : result) {
        if (viewport.number != kNone) continue;
        while (isTaken(next))
            ++next;
        viewport.number = next;
    }
    return result;
}

} // namespace

std::vector<NumberedViewport> modelViewports(const AcDbDatabase& db) {
    return db.tilemode() ? tiles(db) : floatingViewports(currentSheet(db));
}

AcDbObjectId modelViewport(const AcDbDatabase& db, short number) {
    const std::vector<NumberedViewport> all = modelViewports(db);
    const auto at = std::ranges::find(all, number, &NumberedViewport::number);
    return at == all.end() ? AcDbObjectId() : at->id;
}

AcDbObjectId currentSheet(const AcDbDatabase& db) { return db.paperSpaceId(); }

AcDbObjectId sheetViewport(AcDbObjectId sheet) {
    const std::vector<AcDbObjectId> all = viewportsOn(sheet);
    auto found = std::ranges::find(all, kSheetNumber, fileNumber);
    // On sheets that were not shown when the file was written no viewport has a number.
    if (found == all.end() && !all.empty() && fileNumber(all.front()) == 0) found = all.begin();
    return found == all.end() ? AcDbObjectId() : *found;
}

const AcDbViewportTableRecord* currentTile(const AcDbDatabase& db) {
    if (const auto* chosen = living<AcDbViewportTableRecord>(db.settings().tiledViewport))
        return chosen;
    const std::vector<NumberedViewport> all = tiles(db);
    return all.empty() ? nullptr : Residence::peek<AcDbViewportTableRecord>(all.front().id);
}

const AcDbViewport* currentFloating(const AcDbDatabase& db) {
    return db.tilemode() ? nullptr : living<AcDbViewport>(db.settings().floatingViewport);
}

bool isSheetCurrent(const AcDbDatabase& db) {
    return !db.tilemode() && currentFloating(db) == nullptr;
}

short currentViewport(const AcDbDatabase& db) {
    const AcDbObject* current = currentFloating(db);
    if (db.tilemode()) current = currentTile(db);
    for (const NumberedViewport& viewport : modelViewports(db)) {
        if (Residence::peek(viewport.id) == current) return viewport.number;
    }
    return db.tilemode() ? kFirstViewport : kSheetNumber;
}

bool setCurrentViewport(AcDbDatabase& db, short number) {
    if (!db.tilemode() && number == kSheetNumber) {
        showSheet(db);
        return true;
    }
    const AcDbObjectId id = modelViewport(db, number);
    if (id.isNull()) return false;
    if (db.tilemode()) {
        db.settingsForWrite().tiledViewport = id;
        return true;
    }
    if (!Residence::peek<AcDbViewport>(id)->showsModel()) return false;
    db.settingsForWrite().floatingViewport = id;
    return db.setCurrentSpaceId(db.modelSpaceId()) == Acad::eOk;
}

void showModel(AcDbDatabase& db) {
    db.settingsForWrite().tilemode = true;
    db.setCurrentSpaceId(db.modelSpaceId());
}

void showSheet(AcDbDatabase& db, AcDbObjectId sheet) {
    auto* const shown = Residence::peek<AcDbBlockTableRecord>(sheet);
    auto* const before = Residence::peek<AcDbBlockTableRecord>(currentSheet(db));
    if (shown != nullptr && before != nullptr && shown != before)
        Residence::peek<AcDbBlockTable>(db.blockTableId())->exchangeNames(*shown, *before);
    DrawingSettings& settings = db.settingsForWrite();
    settings.tilemode = false;
    settings.floatingViewport = {};
    db.setCurrentSpaceId(currentSheet(db));
}

View sheetView(const AcDbDatabase& db) {
    const auto* viewport = Residence::peek<AcDbViewport>(sheetViewport(currentSheet(db)));
    return viewport == nullptr ? freshSheetView(db) : viewport->viewOf();
}

View currentView(const AcDbDatabase& db) {
    if (const auto* floating = currentFloating(db)) return floating->viewOf();
    if (!db.tilemode()) return sheetView(db);
    const auto* tile = currentTile(db);
    return tile == nullptr ? View() : tile->viewOf();
}

Acad::ErrorStatus setCurrentView(AcDbDatabase& db, const View& view) {
    if (const auto* floating = currentFloating(db))
        return giveView<AcDbViewport>(floating->objectId(), view);
    if (!db.tilemode()) {
        const AcDbObjectId own = sheetViewport(currentSheet(db));
        return own.isNull() ? addSheetViewport(db, view) : giveView<AcDbViewport>(own, view);
    }
    const auto* tile = currentTile(db);
    if (tile == nullptr) return Acad::eNullObjectId;
    return giveView<AcDbViewportTableRecord>(tile->objectId(), view);
}

} // namespace headless
