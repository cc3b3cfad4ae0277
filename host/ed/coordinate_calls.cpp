#include "ed/coordinate_calls.h"

#include <cmath>
#include <limits>
#include <variant>

#include "db/fault_hook.h"
#include "db/residence.h"
#include "db/state.h"
#include "ed/current_view.h"
#include "ed/point_arrays.h"
#include "ed/screen.h"
#include "ed/user_coordinates.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"
#include "ge/ocs.h"

namespace headless {
namespace {

AcDbDatabase* workingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

enum class Displayed { inViewport, onSheet };

/// A coordinate system: an affine one by its matrix to the world, or a display.
using CoordinateSystem = std::variant<AcGeMatrix3d, Displayed>;

std::optional<CoordinateSystem> systemOfCode(const AcDbDatabase& db, int code) {
    switch (code) {
    case 0:
        return AcGeMatrix3d::kIdentity;
    case 1:
        return userToWorld(db);
    case 2:
        return Displayed::inViewport;
    case 3:
        return Displayed::onSheet;
    default:
        return std::nullopt;
    }
}

std::optional<CoordinateSystem> systemOfEntity(const ads_name& name) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk) return std::nullopt;
    const auto* entity = Residence::peek<AcDbEntity>(id);
    if (entity == nullptr || id.isErased()) return std::nullopt;
    AcGeMatrix3d matrix;
    const AcDbObjectPointer<AcDbEntity> open(id); // Refused harmlessly when somebody writes to it.
    if (!entity->isReadEnabled()) return std::nullopt;
    entity->getEcs(matrix);
    return matrix;
}

std::optional<CoordinateSystem> systemOf(const AcDbDatabase& db, const resbuf& buffer) {
    switch (buffer.restype) {
    case RTSHORT:
        return systemOfCode(db, buffer.resval.rint);
    case RTENAME:
        return systemOfEntity(buffer.resval.rlname);
    case RT3DPOINT: {
        const AcGeVector3d& extrusion = asVec3d(buffer.resval.rpoint);
        if (extrusion.isZeroLength()) return std::nullopt;
        return ocsMatrix(extrusion);
    }
    default:
        return std::nullopt;
    }
}

bool isSheet(const CoordinateSystem& system) {
    return system == CoordinateSystem(Displayed::onSheet);
}

/// How a floating viewport places what it shows on its sheet: x and y move, all three scale.
struct Placement {
    explicit Placement(const AcDbViewport& viewport)
        : view(viewport.viewOf().center), sheet(viewport.centerOf()),
          scale(viewport.heightOf() / viewport.viewOf().height) {}

    AcGePoint3d onSheet(const AcGePoint3d& p) const {
        return {sheet.x + (p.x - view.x) * scale, sheet.y + (p.y - view.y) * scale, p.z * scale};
    }
    AcGePoint3d inViewport(const AcGePoint3d& p) const {
        return {view.x + (p.x - sheet.x) / scale, view.y + (p.y - sheet.y) / scale, p.z / scale};
    }

    AcGePoint2d view;
    AcGePoint3d sheet;
    double scale;
};

bool isInViewport(const CoordinateSystem& system) {
    return system == CoordinateSystem(Displayed::inViewport);
}

/// Translates between systems, at least one of which is the sheet's display.
std::optional<AcGePoint3d> acrossSheet(const AcDbDatabase& db, const AcGePoint3d& point,
                                       const CoordinateSystem& from, const CoordinateSystem& to,
                                       bool displacement) {
    const AcDbViewport* viewport = currentFloating(db);
    const bool outwards = isInViewport(from) && isSheet(to);
    if (viewport == nullptr || (!outwards && !(isSheet(from) && isInViewport(to))))
        return std::nullopt;
    const Placement placement(*viewport);
    if (!(placement.scale > 0.0)) return std::nullopt; // A window without height.
    if (!displacement) return outwards ? placement.onSheet(point) : placement.inViewport(point);
    const double scale = outwards ? placement.scale : 1.0 / placement.scale;
    return AcGePoint3d(point.x * scale, point.y * scale, point.z * scale);
}

std::optional<AcGePoint3d> pointAcross(const AcDbDatabase& db, const AcGePoint3d& point,
                                       const CoordinateSystem& from, const CoordinateSystem& to) {
    const View view = currentView(db);
    const auto* fromMatrix = std::get_if<AcGeMatrix3d>(&from);
    const auto world =
        fromMatrix != nullptr ? std::optional(*fromMatrix * point) : displayToWorld(view, point);
    if (!world) return std::nullopt;
    const auto* toMatrix = std::get_if<AcGeMatrix3d>(&to);
    return toMatrix != nullptr ? std::optional(toMatrix->inverse() * *world)
                               : worldToDisplay(view, *world);
}

AcGePoint3d displacementAcross(const AcDbDatabase& db, const AcGePoint3d& point,
                               const CoordinateSystem& from, const CoordinateSystem& to) {
    const AcGeMatrix3d display = displayMatrix(currentView(db));
    const auto matrixOf = [&](const CoordinateSystem& system) {
        const auto* matrix = std::get_if<AcGeMatrix3d>(&system);
        return matrix != nullptr ? *matrix : display;
    };
    const AcGeVector3d moved =
        matrixOf(to).inverse() * (matrixOf(from) * AcGeVector3d(point.x, point.y, point.z));
    return {moved.x, moved.y, moved.z};
}

std::optional<AcGePoint3d> translated(const AcDbDatabase& db, const AcGePoint3d& point,
                                      const resbuf& fromCode, const resbuf& toCode,
                                      bool displacement) {
    const auto from = systemOf(db, fromCode);
    const auto to = systemOf(db, toCode);
    if (!from || !to) return std::nullopt;
    if (isSheet(*from) || isSheet(*to)) return acrossSheet(db, point, *from, *to, displacement);
    return displacement ? std::optional(displacementAcross(db, point, *from, *to))
                        : pointAcross(db, point, *from, *to);
}

std::optional<short> viewportNumber(int number) {
    if (number < kSheetNumber || number > std::numeric_limits<short>::max()) return std::nullopt;
    return static_cast<short>(number);
}

AcGePoint2d asPoint(const CPoint& pixel) {
    return {static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
}

} // namespace
} // namespace headless

using namespace headless;

int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp,
              ads_point result) {
    const AcDbDatabase* db = workingDatabase();
    if (db == nullptr || pt == nullptr || from == nullptr || to == nullptr || result == nullptr)
        return RTERROR;
    const auto answer = translated(*db, asPnt3d(pt), *from, *to, disp != 0);
    if (!answer || FaultHook::fails("acedTrans")) return RTERROR;
    asPnt3d(result) = *answer;
    return RTNORM;
}

Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* view, AcDbViewport* viewport) {
    AcDbDatabase* db = workingDatabase();
    if (db == nullptr) return Acad::eNoDatabase;
    if (view == nullptr) return Acad::eInvalidInput;
    if (viewport != nullptr) return showIn(*viewport, *view);
    if (view->isPaperspaceView() != isSheetCurrent(*db)) return Acad::eInvalidInput;
    return showInCurrent(*db, *view);
}

int acedGetWinNum(int x, int y) {
    const AcDbDatabase* db = workingDatabase();
    if (db == nullptr) return 0;
    return viewportAt(*db, asPoint(CPoint(x, y))).value_or(short{0});
}

BOOL acedCoordFromPixelToWorld(int viewport, CPoint pixel, acedDwgPoint point) {
    const AcDbDatabase* db = workingDatabase();
    const auto number = viewportNumber(viewport);
    if (db == nullptr || !number || point == nullptr) return FALSE;
    const auto world = pixelToWorld(*db, *number, asPoint(pixel));
    if (!world) return FALSE;
    asPnt3d(point) = *world;
    return TRUE;
}

int acedCoordFromPixelToWorld(const CPoint& pixel, acedDwgPoint point) {
    const int viewport = acedGetWinNum(pixel.x, pixel.y);
    return acedCoordFromPixelToWorld(viewport, pixel, point) != FALSE ? viewport : 0;
}

BOOL acedCoordFromWorldToPixel(int viewport, const acedDwgPoint point, CPoint& pixel) {
    const AcDbDatabase* db = workingDatabase();
    const auto number = viewportNumber(viewport);
    if (db == nullptr || !number || point == nullptr) return FALSE;
    const auto place = worldToPixel(*db, *number, asPnt3d(point));
    constexpr double kMost = std::numeric_limits<LONG>::max();
    if (!place || !(std::abs(place->x) < kMost) || !(std::abs(place->y) < kMost)) return FALSE;
    pixel =
        CPoint(static_cast<int>(std::lround(place->x)), static_cast<int>(std::lround(place->y)));
    return TRUE;
}
