#include "ed/selection_modes.h"

#include <algorithm>
#include <cmath>
#include <ranges>

#include "db/block_table.h"
#include "db/entity.h"
#include "db/layer_table.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "ed/entity_filter.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"

namespace headless {
namespace {

using Ids = std::vector<AcDbObjectId>;
using Outline = std::vector<AcGePoint2d>;

const AcDbEntity* livingEntity(AcDbObjectId id) {
    return id.isErased() ? nullptr : Residence::peek<AcDbEntity>(id);
}

/// What a user could select with the mouse.
bool isSelectable(const AcDbEntity& entity) {
    if (entity.visibility() == AcDb::kInvisible) return false;
    const auto* layer = Residence::peek<AcDbLayerTableRecord>(entity.layerId());
    return layer == nullptr ||
           (layer->showsEntities() && !layer->locksEntities() && !layer->isHiddenLayer());
}

/// The entities of a space, the newest first.
template <class Take>
void takeFrom(const AcDbBlockTableRecord& space, Take take) {
    for (const AcDbObjectId id : space.entityIds() | std::views::reverse) {
        const auto* entity = livingEntity(id);
        if (entity != nullptr && !take(id, *entity)) return;
    }
}

Ids wholeDrawing(const AcDbDatabase& db, const EntityFilter& filter, bool selectableOnly) {
    Ids result;
    const auto take = [&](AcDbObjectId id, const AcDbEntity& entity) {
        if ((!selectableOnly || isSelectable(entity)) && filter.matches(entity))
            result.push_back(id);
        return true;
    };
    const auto* blocks = Residence::peek<AcDbBlockTable>(db.blockTableId());
    if (blocks == nullptr) return result;
    for (const AcDbObjectId id : blocks->recordIds()) {
        const auto* block = Residence::peek<AcDbBlockTableRecord>(id);
        if (block != nullptr && !id.isErased() && block->isSpace()) takeFrom(*block, take);
    }
    return result;
}

Ids lastOf(const AcDbDatabase& db, const EntityFilter& filter) {
    Ids result;
    const auto* space = Residence::peek<AcDbBlockTableRecord>(db.currentSpaceId());
    if (space == nullptr) return result;
    takeFrom(*space, [&](AcDbObjectId id, const AcDbEntity& entity) {
        if (!isSelectable(entity)) return true;
        if (filter.matches(entity)) result.push_back(id);
        return false;
    });
    return result;
}

/// Those of a former selection that are still there; its drawing may be closed by now.
Ids stillThere(const AcDbDatabase& db, const Ids& ids, const EntityFilter& filter) {
    Ids result;
    std::ranges::copy_if(ids, std::back_inserter(result), [&](AcDbObjectId id) {
        if (!db.ownsStub(id)) return false;
        const auto* entity = livingEntity(id);
        return entity != nullptr && filter.matches(*entity);
    });
    return result;
}

AcGePoint3d inWorld(const AcDbDatabase& db, const void* point) {
    const auto* const given = static_cast<const ads_real*>(point);
    return userToWorld(db) * AcGePoint3d(given[0], given[1], given[2]);
}

/// The corners of a box along the view's axes between two points of user coordinates.
std::vector<AcGePoint3d> boxInWorld(const AcDbDatabase& db, const void* point1,
                                    const void* point2) {
    const AcGeMatrix3d toWorld = displayMatrix(currentView(db));
    const AcGeMatrix3d toView = toWorld.inverse();
    const AcGePoint3d a = toView * inWorld(db, point1);
    const AcGePoint3d b = toView * inWorld(db, point2);
    return {toWorld * a, toWorld * AcGePoint3d(b.x, a.y, a.z), toWorld * b,
            toWorld * AcGePoint3d(a.x, b.y, b.z)};
}

std::vector<AcGePoint3d> chainInWorld(const AcDbDatabase& db, const void* chain) {
    std::vector<AcGePoint3d> points;
    for (const auto* buffer = static_cast<const resbuf*>(chain); buffer != nullptr;
         buffer = buffer->rbnext) {
        if (valueKind(buffer->restype) == ValueKind::kPoint)
            points.push_back(inWorld(db, buffer->resval.rpoint));
    }
    return points;
}

/// Where a point of user coordinates is seen.
std::optional<AcGePoint2d> seen(const AcDbDatabase& db, const void* point) {
    if (point == nullptr) return std::nullopt;
    const AcGePoint2d place = placeInView(db, inWorld(db, point));
    if (!std::isfinite(place.x) || !std::isfinite(place.y)) return std::nullopt;
    return place;
}

std::optional<Outline> seenBox(const AcDbDatabase& db, const void* point1, const void* point2) {
    const auto first = seen(db, point1);
    const auto second = seen(db, point2);
    if (!first || !second) return std::nullopt;
    return boxBetween(*first, *second);
}

/// The points of a chain that is as long as the mode needs.
std::optional<Outline> seenChain(const AcDbDatabase& db, const void* chain, std::size_t least) {
    Outline outline;
    for (const AcGePoint3d& point : chainInWorld(db, chain)) {
        const AcGePoint2d place = placeInView(db, point);
        if (!std::isfinite(place.x) || !std::isfinite(place.y)) return std::nullopt;
        outline.push_back(place);
    }
    if (outline.size() < least) return std::nullopt;
    return outline;
}

std::optional<Outline> pickBox(const AcDbDatabase& db, const void* point) {
    const auto place = seen(db, point);
    return place ? std::optional(pickBoxAround(db, *place)) : std::nullopt;
}

/// What a mode selects that goes by no place; nothing for another mode.
std::optional<Ids> selectedAnywhere(const AcDbDatabase& db, std::wstring_view mode,
                                    const EntityFilter& filter) {
    const SelectionSets& sets = EdState::current().selections;
    if (mode == L"X") return wholeDrawing(db, filter, false);
    if (mode == L"A") return wholeDrawing(db, filter, true);
    if (mode == L"L") return lastOf(db, filter);
    if (mode == L"P") return stillThere(db, sets.previous, filter);
    if (mode == L"I") return stillThere(db, sets.implied, filter);
    return std::nullopt;
}

} // namespace

std::optional<Ids> selectByMode(const AcDbDatabase& db, std::wstring_view mode, const void* point1,
                                const void* point2, const EntityFilter& filter) {
    if (auto ids = selectedAnywhere(db, mode, filter)) return ids;
    const Accepts accepts = [&](const AcDbEntity& entity) { return filter.matches(entity); };
    const auto select = [&](PickBy how, const std::optional<Outline>& outline,
                            std::size_t most = SIZE_MAX) {
        return outline ? std::optional(selectByPlace(db, how, *outline, accepts, most))
                       : std::nullopt;
    };
    if (mode == L"W") return select(PickBy::window, seenBox(db, point1, point2));
    if (mode == L"C") return select(PickBy::crossing, seenBox(db, point1, point2));
    if (mode == L"WP") return select(PickBy::window, seenChain(db, point1, 3));
    if (mode == L"CP") return select(PickBy::crossing, seenChain(db, point1, 3));
    if (mode == L"F") return select(PickBy::fence, seenChain(db, point1, 2));
    if (mode.empty()) return select(PickBy::crossing, pickBox(db, point1), 1);
    return std::nullopt;
}

SelectedBy gestureOfMode(const AcDbDatabase& db, std::wstring_view mode, const void* point1,
                         const void* point2) {
    using Kind = SelectionGesture::Kind;
    const AcGeVector3d sight = currentView(db).direction.normal();
    const auto gesture = [&](Kind kind, std::vector<AcGePoint3d> points) {
        return std::make_shared<const SelectionGesture>(
            SelectionGesture{kind, std::move(points), sight});
    };
    const auto box = [&](Kind kind) {
        return point2 == nullptr ? nullptr : gesture(kind, boxInWorld(db, point1, point2));
    };
    if (point1 == nullptr) return nullptr;
    if (mode.empty()) return gesture(Kind::kPick, {inWorld(db, point1)});
    if (mode == L"W") return box(Kind::kWindow);
    if (mode == L"C") return box(Kind::kCrossing);
    if (mode == L"WP") return gesture(Kind::kWindow, chainInWorld(db, point1));
    if (mode == L"CP") return gesture(Kind::kCrossing, chainInWorld(db, point1));
    return mode == L"F" ? gesture(Kind::kFence, chainInWorld(db, point1)) : nullptr;
}

std::vector<AcDbObjectId> selectableInSpace(const AcDbDatabase& db, const EntityFilter& filter) {
    Ids result;
    const auto* space = Residence::peek<AcDbBlockTableRecord>(db.currentSpaceId());
    if (space == nullptr) return result;
    takeFrom(*space, [&](AcDbObjectId id, const AcDbEntity& entity) {
        if (isSelectable(entity) && filter.matches(entity)) result.push_back(id);
        return true;
    });
    return result;
}

} // namespace headless
