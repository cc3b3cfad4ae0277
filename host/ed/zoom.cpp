#include "ed/zoom.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "db/block_table.h"
#include "db/entity.h"
#include "db/geometry_sink.h"
#include "db/layer_table.h"
#include "db/residence.h"
#include "db/state.h"
#include "db/viewport.h"
#include "ed/commands.h"
#include "ed/current_view.h"
#include "ed/parse_input.h"
#include "ed/prompts.h"
#include "ed/screen.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"

namespace headless {
namespace {

bool isPlan(const View& view) {
    const AcGeVector3d direction = view.direction.normal();
    return direction.isEqualTo(AcGeVector3d::kZAxis);
}

bool counts(const AcDbEntity& entity) {
    if (entity.visibility() == AcDb::kInvisible) return false;
    const auto* layer = Residence::peek<AcDbLayerTableRecord>(entity.layerId());
    return layer == nullptr || !layer->isFrozenLayer();
}

double aspectOf(const AcDbDatabase& db) {
    const ScreenArea area = currentScreenArea(db);
    return area.width / area.height;
}

/// Shows the whole box, which is in the view's own coordinates; one without size is centred.
Acad::ErrorStatus showBox(AcDbDatabase& db, const AcDbExtents& box) {
    View view = currentView(db);
    const AcGeVector3d size = box.maxPoint() - box.minPoint();
    const AcGePoint3d middle = box.minPoint() + size / 2.0;
    view.center.set(middle.x, middle.y);
    const double height = std::max(size.y, size.x / aspectOf(db));
    if (height > 0.0) view.height = height;
    return changeView(db, view);
}

/// The limits of the current space as the view shows them.
AcDbExtents displayedLimits(const AcDbDatabase& db) {
    const DrawingSettings& s = db.settings();
    const bool paper = isSheetCurrent(db);
    const AcGePoint2d& low = paper ? s.plimmin : s.limmin;
    const AcGePoint2d& high = paper ? s.plimmax : s.limmax;
    AcDbExtents box({low.x, low.y, 0.0}, {high.x, high.y, 0.0});
    box.transformBy(displayMatrix(currentView(db)).inverse());
    return box;
}

Acad::ErrorStatus magnify(AcDbDatabase& db, double factor) {
    View view = currentView(db);
    view.height /= factor;
    return changeView(db, view);
}

/// A scale as typed: "0.5X" of what is seen now, "0.1XP" of the sheet, "2" of the limits' size.
Acad::ErrorStatus zoomToScale(AcDbDatabase& db, std::wstring text) {
    const auto takeSuffix = [&](wchar_t letter) {
        const bool has = !text.empty() && (text.back() == letter || text.back() == letter + 32);
        if (has) text.pop_back();
        return has;
    };
    const bool ofSheet = takeSuffix(L'P');
    const bool relative = takeSuffix(L'X');
    const auto factor = parseReal(text);
    if (!factor || !(*factor > 0.0) || (ofSheet && !relative)) return Acad::eInvalidInput;
    if (ofSheet) {
        const AcDbViewport* viewport = currentFloating(db);
        if (viewport == nullptr) return Acad::eNotApplicable;
        return magnify(db, viewport->viewOf().height * *factor / viewport->heightOf());
    }
    if (relative) return magnify(db, *factor);
    const AcDbExtents limits = displayedLimits(db);
    const AcGeVector3d size = limits.maxPoint() - limits.minPoint();
    View view = currentView(db);
    view.height = std::max(size.y, size.x / aspectOf(db)) / *factor;
    return changeView(db, view);
}

void say(const wchar_t* text) { EdState::current().output.print(text); }

/// A point of the world as the view shows it.
AcGePoint3d displayed(const AcDbDatabase& db, const AcGePoint3d& point) {
    return displayMatrix(currentView(db)).inverse() * point;
}

/// A point of the user's.
AcGePoint3d inWorld(const AcDbDatabase& db, const ads_point point) {
    return userToWorld(db) * AcGePoint3d(point[0], point[1], point[2]);
}

Acad::ErrorStatus askWindow(AcDbDatabase& db, const ads_point first) {
    ads_point second;
    if (acedGetPoint(first, L"\nSpecify opposite corner: ", second) != RTNORM) return Acad::eOk;
    return zoomWindow(db, inWorld(db, first), inWorld(db, second));
}

Acad::ErrorStatus askCenter(AcDbDatabase& db) {
    ads_point center;
    if (acedGetPoint(nullptr, L"\nSpecify center point: ", center) != RTNORM) return Acad::eOk;
    ACHAR typed[133] = {};
    if (acedGetString(0, L"\nEnter magnification or height: ", typed) != RTNORM) return Acad::eOk;
    std::wstring text = typed;
    const double before = currentView(db).height;
    const bool relative = !text.empty() && (text.back() == L'X' || text.back() == L'x');
    if (relative) text.pop_back();
    double height = before;
    if (!text.empty() || relative) {
        const double number = parseReal(text).value_or(0.0);
        height = relative ? before / std::max(number, 0.0) : number;
    }
    return zoomCenter(db, inWorld(db, center), height);
}

Acad::ErrorStatus zoomByWord(AcDbDatabase& db, const std::wstring& word) {
    if (word == L"All") return zoomAll(db);
    if (word == L"Extents") return zoomExtents(db);
    if (word == L"Center") return askCenter(db);
    if (word == L"Previous") {
        if (!restorePreviousView(db)) say(L"\nNo previous view is saved.");
        return Acad::eOk;
    }
    if (word == L"Scale") {
        ACHAR scale[133] = {};
        const ACHAR* prompt = L"\nEnter a scale factor (nX or nXP): ";
        return acedGetString(0, prompt, scale) == RTNORM ? zoomToScale(db, scale) : Acad::eOk;
    }
    if (word == L"Window") {
        ads_point first;
        return acedGetPoint(nullptr, L"\nSpecify first corner: ", first) == RTNORM
                   ? askWindow(db, first)
                   : Acad::eOk;
    }
    return zoomToScale(db, word);
}

void zoomCommand() {
    AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr) return;
    acedInitGet(RSG_OTHER, L"All Center Extents Previous Scale Window");
    ads_point corner;
    const int answer =
        acedGetPoint(nullptr,
                     L"\nSpecify corner of window, enter a scale factor (nX or nXP), or "
                     L"[All/Center/Extents/Previous/Scale/Window]: ",
                     corner);
    Acad::ErrorStatus status = Acad::eOk;
    if (answer == RTNORM) {
        status = askWindow(*db, corner);
    } else if (answer == RTKWORD) {
        ACHAR word[133] = {};
        acedGetInput(word);
        status = zoomByWord(*db, word);
    }
    if (status == Acad::eInvalidInput) say(L"\nA positive number, nX or nXP is needed.");
    if (status == Acad::eNotApplicable) say(L"\nnXP is for viewports of a layout.");
}

} // namespace

AcDbExtents displayedExtents(const AcDbDatabase& db) {
    const AcGeMatrix3d toDisplay = displayMatrix(currentView(db)).inverse();
    AcDbExtents all;
    const auto* space = Residence::peek<AcDbBlockTableRecord>(db.currentSpaceId());
    if (space == nullptr) return all;
    for (const AcDbObjectId id : space->entityIds()) {
        const auto* entity = Residence::peek<AcDbEntity>(id);
        if (entity == nullptr || id.isErased() || !counts(*entity)) continue;
        AcDbExtents box;
        if (extentsUnder(*entity, toDisplay, box) == Acad::eOk) all.addExt(box);
    }
    return all;
}

Acad::ErrorStatus zoomExtents(AcDbDatabase& db) {
    const AcDbExtents extents = displayedExtents(db);
    return showBox(db, isEmpty(extents) ? displayedLimits(db) : extents);
}

Acad::ErrorStatus zoomAll(AcDbDatabase& db) {
    AcDbExtents box = displayedExtents(db);
    if (isEmpty(box) || isPlan(currentView(db))) box.addExt(displayedLimits(db));
    return showBox(db, box);
}

Acad::ErrorStatus zoomWindow(AcDbDatabase& db, const AcGePoint3d& first,
                             const AcGePoint3d& second) {
    AcDbExtents box;
    box.addPoint(displayed(db, first));
    box.addPoint(displayed(db, second));
    return showBox(db, box);
}

Acad::ErrorStatus zoomCenter(AcDbDatabase& db, const AcGePoint3d& center, double height) {
    if (!(height > 0.0) || !std::isfinite(height)) return Acad::eInvalidInput;
    View view = currentView(db);
    const AcGePoint3d seen = displayed(db, center);
    view.center.set(seen.x, seen.y);
    view.height = height;
    return changeView(db, view);
}

void registerZoom(AcEdCommandStack& commands) {
    commands.addCommand(L"CORE", L"ZOOM", L"ZOOM", ACRX_CMD_TRANSPARENT, zoomCommand);
}

} // namespace headless
