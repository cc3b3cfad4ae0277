#include "ed/nested_selection.h"

#include <algorithm>
#include <cmath>

#include "db/fault_hook.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/state.h"
#include "ed/entity_pick.h"
#include "ed/geometric_selection.h"
#include "ed/user_coordinates.h"

namespace headless {
namespace {

struct NestedPick {
    EntityPick pick;
    NestedEntity found;
};

/// Control points of smoothed polylines are no part of the curve.
bool isDrawn(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> vertex(id, AcDb::kForRead);
    if (vertex.openStatus() != Acad::eOk) return false;
    if (const auto* const flat = AcDb2dVertex::cast(vertex.object()))
        return flat->vertexType() != AcDb::k2dSplineCtlVertex;
    const auto* const spatial = AcDb3dPolylineVertex::cast(vertex.object());
    return spatial != nullptr && spatial->vertexType() != AcDb::k3dControlVertex;
}

/// The vertex of an old polyline that the segment nearest to a point begins with; the entity itself
/// when it is none.
/// @param at  in the coordinates that the entity stands in.
AcDbObjectId vertexAt(AcDbObjectId id, const AcGePoint3d& at) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    if (curve.openStatus() != Acad::eOk) return id;
    auto* const owner = dynamic_cast<SubentityOwner*>(curve.object());
    if (owner == nullptr) return id;
    AcGePoint3d nearest;
    double param = 0.0;
    if (curve->getClosestPointTo(at, nearest) != Acad::eOk ||
        curve->getParamAtPoint(nearest, param) != Acad::eOk)
        return id;
    std::vector<AcDbObjectId> drawn;
    owner->subentities().forEach<AcDbEntity>([&](const AcDbEntity& vertex) {
        if (isDrawn(vertex.objectId())) drawn.push_back(vertex.objectId());
    });
    if (drawn.empty()) return id;
    const double last = static_cast<double>(drawn.size() - 1);
    return drawn[static_cast<std::size_t>(std::clamp(std::floor(param), 0.0, last))];
}

/// Looks into what was picked.
NestedPick lookInto(const AcDbDatabase& db, EntityPick pick) {
    NestedPick nested{std::move(pick), {}};
    if (nested.pick.result != RTNORM) return nested;
    const AcGePoint3d world = userToWorld(db) * *nested.pick.at;
    nested.found.entity = nested.pick.entity;
    // The last entity was picked nowhere.
    if (auto found =
            entityWithin(db, nested.pick.entity, pickBoxAround(db, placeInView(db, world))))
        nested.found = std::move(*found);
    nested.pick.entity = vertexAt(nested.found.entity, nested.found.toWorld.inverse() * world);
    return nested;
}

resbuf* chainOf(const std::vector<AcDbObjectId>& ids) {
    resbuf* chain = nullptr;
    for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
        resbuf* const link = acutNewRb(RTENAME);
        link->resval.rlname[0] = id->asOldId();
        link->resval.rlname[1] = 0;
        link->rbnext = chain;
        chain = link;
    }
    return chain;
}

/// Asks, or looks at the point given.
NestedPick pickNested(const AcDbDatabase& db, const ACHAR* prompt, const PromptRules& rules,
                      const ads_point given) {
    return lookInto(db, given == nullptr ? askEntity(db, prompt, rules)
                                         : pickEntity(db, {given[0], given[1], given[2]}));
}

} // namespace
} // namespace headless

using namespace headless;

int acedNEntSel(const ACHAR* prompt, ads_name entity, ads_point point, ads_point toWorld[4],
                resbuf** containers) {
    if (toWorld == nullptr) return RTERROR;
    ads_matrix matrix;
    const int result = acedNEntSelP(prompt, entity, point, 0, matrix, containers);
    for (unsigned int column = 0; result == RTNORM && column < 4; ++column)
        for (unsigned int axis = 0; axis < 3; ++axis)
            toWorld[column][axis] = matrix[axis][column];
    return result;
}

int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int pointGiven,
                 ads_matrix toWorld, resbuf** containers) {
    const AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    const PromptRules rules = takeRules();
    if (entity == nullptr || point == nullptr || toWorld == nullptr || containers == nullptr)
        return RTERROR;
    if (db == nullptr) return RTCAN;
    if (FaultHook::fails("acedNEntSel")) return failWith(HostError::none);
    const NestedPick nested = pickNested(*db, prompt, rules, pointGiven != 0 ? point : nullptr);
    tell(nested.pick, entity, point);
    if (nested.pick.result != RTNORM) return nested.pick.result;
    for (unsigned int row = 0; row < 4; ++row)
        for (unsigned int column = 0; column < 4; ++column)
            toWorld[row][column] = nested.found.toWorld.entry[row][column];
    *containers = chainOf(nested.found.containers);
    return RTNORM;
}
