#include "ed/current_view.h"

#include <algorithm>

#include "db/view_tables.h"
#include "db/viewport.h"
#include "ed/screen.h"
#include "ed/state.h"
#include "ed/viewports.h"

namespace headless {
namespace {

ViewHistory* historyOf(const AcDbDatabase& db) { return EdState::current().documents.viewsOf(db); }

AcDbObjectId currentViewportObject(const AcDbDatabase& db) {
    if (isSheetCurrent(db)) return sheetViewport(currentSheet(db));
    return modelViewport(db, currentViewport(db));
}

/// The record's view, as high as its whole takes in an area of that width per height; nothing for a
/// view that cannot be shown.
std::optional<View> fitted(const AcDbViewTableRecord& record, double aspect) {
    View view = record.viewOf();
    if (!(view.height > 0.0) || view.direction.isZeroLength()) return std::nullopt;
    // Programs compute the width from the same proportion; what is lost in that must not zoom.
    constexpr double kRounding = 1e-9;
    const double needed = record.width() / aspect;
    if (needed > view.height * (1.0 + kRounding)) view.height = needed;
    return view;
}

} // namespace

void ViewHistory::remember(AcDbObjectId viewport, const View& view) {
    entries_.push_back({viewport, view});
    if (std::ranges::count(entries_, viewport, &Entry::viewport) > std::ptrdiff_t{kMostOfViewport})
        entries_.erase(std::ranges::find(entries_, viewport, &Entry::viewport));
}

std::optional<View> ViewHistory::takeBack(AcDbObjectId viewport) {
    const auto last = std::find_if(entries_.rbegin(), entries_.rend(),
                                   [&](const Entry& entry) { return entry.viewport == viewport; });
    if (last == entries_.rend()) return std::nullopt;
    const View view = last->view;
    entries_.erase(std::next(last).base());
    return view;
}

Acad::ErrorStatus changeView(AcDbDatabase& db, const View& view) {
    const View before = currentView(db);
    const Acad::ErrorStatus status = setCurrentView(db, view);
    if (status != Acad::eOk) return status;
    // Asked for now: a sheet gets its viewport with its first change.
    if (ViewHistory* history = historyOf(db)) history->remember(currentViewportObject(db), before);
    return Acad::eOk;
}

bool restorePreviousView(AcDbDatabase& db) {
    ViewHistory* history = historyOf(db);
    if (history == nullptr) return false;
    const auto view = history->takeBack(currentViewportObject(db));
    return view && setCurrentView(db, *view) == Acad::eOk;
}

Acad::ErrorStatus showInCurrent(AcDbDatabase& db, const AcDbViewTableRecord& record) {
    const ScreenArea area = currentScreenArea(db);
    auto view = fitted(record, area.width / area.height);
    if (!view) return Acad::eInvalidInput;
    // Whether the UCS follows is the viewport's own, no view's.
    view->set(kUcsFollowsView, currentView(db).has(kUcsFollowsView));
    return changeView(db, *view);
}

Acad::ErrorStatus showIn(AcDbViewport& viewport, const AcDbViewTableRecord& record) {
    if (!viewport.isWriteEnabled()) return Acad::eNotOpenForWrite;
    const auto view = fitted(record, viewport.widthOf() / viewport.heightOf());
    return view ? viewport.setView(*view) : Acad::eInvalidInput;
}

} // namespace headless
