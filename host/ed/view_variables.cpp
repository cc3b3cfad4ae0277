// System variables that tell what is seen, through which viewport and in which coordinates.
//
// Points and directions are in user coordinates.
#include <algorithm>
#include <limits>

#include "db/block_table.h"
#include "db/dictionary.h"
#include "db/residence.h"
#include "ed/screen.h"
#include "ed/user_coordinates.h"
#include "ed/variable_table.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"
#include "win/casing.h"

namespace headless {
namespace {

using Short = Adesk::Int16;
using Text = std::wstring;

constexpr bool kReadOnly = true;
constexpr bool kWritable = false;
constexpr const wchar_t* kModelTab = L"Model";

VariableValue asValue(const AcGeVector3d& vector) {
    return AcGePoint3d(vector.x, vector.y, vector.z);
}

template <auto Member>
VariableValue readView(AcDbDatabase& db) {
    return currentView(db).*Member;
}

VariableValue inUser(const AcDbDatabase& db, const AcGePoint3d& world) {
    return userToWorld(db).inverse() * world;
}

/// The point of the target's plane that is seen at that place of the view.
VariableValue seenAt(const AcDbDatabase& db, const View& view, double x, double y) {
    return inUser(db, *displayToWorld(view, AcGePoint3d(x, y, 0.0)));
}

VariableValue readCenter(AcDbDatabase& db) {
    const View view = currentView(db);
    return seenAt(db, view, view.center.x, view.center.y);
}

/// A corner of what is seen; -1 and -1 for the lower left one.
template <int kX, int kY>
VariableValue readCorner(AcDbDatabase& db) {
    const View view = currentView(db);
    const ScreenArea area = currentScreenArea(db);
    const double half = view.height / 2.0;
    return seenAt(db, view, view.center.x + kX * half * area.width / area.height,
                  view.center.y + kY * half);
}

VariableValue readTarget(AcDbDatabase& db) { return inUser(db, currentView(db).target); }

VariableValue readDirection(AcDbDatabase& db) {
    return asValue(userToWorld(db).inverse() * currentView(db).direction);
}

VariableValue readScreenSize(AcDbDatabase& db) {
    const ScreenArea area = currentScreenArea(db);
    return AcGePoint2d(area.width, area.height);
}

template <ViewMode kBit>
VariableValue readMode(AcDbDatabase& db) {
    return currentView(db).has(kBit) ? Short{1} : Short{0};
}

template <ViewMode kBit>
SetOutcome writeMode(AcDbDatabase& db, const VariableValue& value) {
    View view = currentView(db);
    view.set(kBit, std::get<Short>(value) != 0);
    return setCurrentView(db, view) == Acad::eOk ? SetOutcome::done : SetOutcome::noDrawing;
}

VariableValue readUcsOrigin(AcDbDatabase& db) {
    const AcGeVector3d origin = userToWorld(db).translation();
    return asValue(origin);
}

template <int kAxis>
VariableValue readUcsAxis(AcDbDatabase& db) {
    return asValue(userToWorld(db) * (kAxis == 0 ? AcGeVector3d::kXAxis : AcGeVector3d::kYAxis));
}

VariableValue readIsWorldUcs(AcDbDatabase& db) { return isWorldUcs(db) ? Short{1} : Short{0}; }

VariableValue readTilemode(AcDbDatabase& db) { return db.tilemode() ? Short{1} : Short{0}; }

SetOutcome writeTilemode(AcDbDatabase& db, const VariableValue& value) {
    const bool model = std::get<Short>(value) != 0;
    if (model == db.tilemode()) return SetOutcome::done;
    if (model)
        showModel(db);
    else
        showSheet(db);
    return SetOutcome::done;
}

VariableValue readViewport(AcDbDatabase& db) { return currentViewport(db); }

SetOutcome writeViewport(AcDbDatabase& db, const VariableValue& value) {
    return setCurrentViewport(db, std::get<Short>(value)) ? SetOutcome::done
                                                          : SetOutcome::outOfRange;
}

const AcDbDictionary* layoutsOf(const AcDbDatabase& db) {
    return Residence::peek<AcDbDictionary>(db.layoutDictionaryId());
}

/// The name of the sheet's layout; that of the first one in drawings that do not tell.
VariableValue readTab(AcDbDatabase& db) {
    if (db.tilemode()) return Text(kModelTab);
    const auto* sheet = Residence::peek<AcDbBlockTableRecord>(currentSheet(db));
    const auto* layouts = layoutsOf(db);
    if (layouts == nullptr || sheet == nullptr) return Text(L"Layout1");
    const auto& entries = layouts->entries();
    auto at = std::ranges::find_if(
        entries, [&](const auto& entry) { return entry.id == sheet->layoutOf(); });
    if (at == entries.end()) {
        at = std::ranges::find_if(
            entries, [](const auto& entry) { return !equalNoCase(entry.key, kModelTab); });
    }
    return at == entries.end() ? Text(L"Layout1") : at->key;
}

AcDbObjectId sheetOfLayout(const AcDbDatabase& db, AcDbObjectId layout) {
    const auto* blocks = Residence::peek<AcDbBlockTable>(db.blockTableId());
    for (const AcDbObjectId id : blocks->recordIds()) {
        const auto* block = Residence::peek<AcDbBlockTableRecord>(id);
        if (block != nullptr && !id.isErased() && block->isSpace() && block->layoutOf() == layout)
            return id;
    }
    return {};
}

SetOutcome writeTab(AcDbDatabase& db, const VariableValue& value) {
    const Text& name = std::get<Text>(value);
    if (equalNoCase(name, kModelTab)) {
        showModel(db);
        return SetOutcome::done;
    }
    if (equalNoCase(name, std::get<Text>(readTab(db)))) {
        if (db.tilemode()) showSheet(db);
        return SetOutcome::done;
    }
    const auto* layouts = layoutsOf(db);
    const AcDbObjectId layout = layouts == nullptr ? AcDbObjectId() : layouts->find(name);
    const AcDbObjectId sheet = layout.isNull() ? layout : sheetOfLayout(db, layout);
    if (sheet.isNull()) return SetOutcome::outOfRange;
    showSheet(db, sheet);
    return SetOutcome::done;
}

VariableSpec fixed(const wchar_t* name, VariableValue like, VariableReader read) {
    return {name, std::move(like), kReadOnly, 0, 0, read};
}

VariableSpec toggle(const wchar_t* name, VariableReader read, VariableWriter write) {
    return {name, Short{0}, kWritable, 0, 1, read, write};
}

} // namespace

std::span<const VariableSpec> viewVariables() {
    static const AcGePoint3d point;
    static const VariableSpec specs[] = {
        fixed(L"BACKZ", 0.0, readView<&View::backClip>),
        {L"CTAB", Text(), kWritable, 0, 0, readTab, writeTab},
        {L"CVPORT", Short{0}, kWritable, 1, std::numeric_limits<Short>::max(), readViewport,
         writeViewport},
        fixed(L"FRONTZ", 0.0, readView<&View::frontClip>),
        fixed(L"LENSLENGTH", 50.0, readView<&View::lensLength>),
        toggle(L"PERSPECTIVE", readMode<kPerspectiveView>, writeMode<kPerspectiveView>),
        fixed(L"SCREENSIZE", AcGePoint2d(), readScreenSize),
        fixed(L"TARGET", point, readTarget),
        toggle(L"TILEMODE", readTilemode, writeTilemode),
        toggle(L"UCSFOLLOW", readMode<kUcsFollowsView>, writeMode<kUcsFollowsView>),
        fixed(L"UCSORG", point, readUcsOrigin),
        fixed(L"UCSXDIR", point, readUcsAxis<0>),
        fixed(L"UCSYDIR", point, readUcsAxis<1>),
        fixed(L"VIEWCTR", point, readCenter),
        fixed(L"VIEWDIR", point, readDirection),
        fixed(L"VIEWMODE", Short{0}, readView<&View::mode>),
        fixed(L"VIEWSIZE", 0.0, readView<&View::height>),
        fixed(L"VIEWTWIST", 0.0, readView<&View::twist>),
        fixed(L"VSMAX", point, readCorner<1, 1>),
        fixed(L"VSMIN", point, readCorner<-1, -1>),
        fixed(L"WORLDUCS", Short{0}, readIsWorldUcs),
    };
    return specs;
}

} // namespace headless
