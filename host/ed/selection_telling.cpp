#include "ed/selection_telling.h"

#include <algorithm>

#include "db/entity.h"
#include "db/line.h"
#include "db/open.h"
#include "db/resbuf.h"
#include "ge/arrays.h"
#include "ge/plane.h"

namespace headless {
namespace {

using Kind = SelectionGesture::Kind;

bool hasOutline(const SelectionGesture& gesture) {
    return gesture.kind == Kind::kWindow || gesture.kind == Kind::kCrossing;
}

/// Where the entity seems to meet the chain, along the chain.
std::vector<AcGePoint3d> crossings(AcDbObjectId id, const SelectionGesture& fence) {
    std::vector<AcGePoint3d> met;
    const AcDbEntityPointer entity(id);
    if (entity.openStatus() != Acad::eOk) return met;
    for (std::size_t i = 1; i < fence.points.size(); ++i) {
        const AcGePoint3d& from = fence.points[i - 1];
        const AcDbLine stretch(from, fence.points[i]);
        AcGePoint3dArray points;
        const AcGePlane seen(from, fence.sight);
        if (entity->intersectWith(&stretch, AcDb::kOnBothOperands, seen, points) != Acad::eOk)
            continue;
        const auto along = [&](const AcGePoint3d& point) {
            return (point - from).dotProduct(fence.points[i] - from);
        };
        std::sort(points.begin(), points.end(),
                  [&](const AcGePoint3d& a, const AcGePoint3d& b) { return along(a) < along(b); });
        met.insert(met.end(), points.begin(), points.end());
    }
    return met;
}

class Telling {
public:
    explicit Telling(const SelectionSet& set) : set_(set) {}

    void entity(AcDbObjectId id) {
        const SelectionGesture* const gesture = set_.gestureOf(id).get();
        number(gesture == nullptr ? 0 : static_cast<int>(gesture->kind));
        items_.push_back({RTENAME, id});
        number(0);
        if (gesture == nullptr) return;
        if (hasOutline(*gesture)) {
            number(polygonNumber(*gesture));
            return;
        }
        const bool picked = gesture->kind == Kind::kPick;
        for (const AcGePoint3d& at : picked ? gesture->points : crossings(id, *gesture))
            point(at, gesture->sight);
    }
    void entityInList(AcDbObjectId id) {
        mark(RTLB);
        entity(id);
        mark(RTLE);
    }
    DataItems withPolygons() {
        for (const SelectionGesture* const polygon : polygons_) {
            mark(RTLB);
            number(polygonNumber(*polygon));
            for (const AcGePoint3d& corner : polygon->points)
                point(corner, polygon->sight);
            mark(RTLE);
        }
        return std::move(items_);
    }

private:
    void mark(std::int16_t kind) { items_.push_back({kind, {}}); }
    void number(int value) { items_.push_back({RTSHORT, static_cast<std::int16_t>(value)}); }
    void point(const AcGePoint3d& place, const AcGeVector3d& sight) {
        mark(RTLB);
        number(0);
        items_.push_back({RT3DPOINT, place});
        if (!sight.isEqualTo(AcGeVector3d::kZAxis))
            items_.push_back({RT3DPOINT, AcGePoint3d::kOrigin + sight});
        mark(RTLE);
    }
    /// From -1 downwards, in the order they are met.
    int polygonNumber(const SelectionGesture& polygon) {
        auto known = std::find(polygons_.begin(), polygons_.end(), &polygon);
        if (known == polygons_.end()) known = polygons_.insert(known, &polygon);
        return -1 - static_cast<int>(known - polygons_.begin());
    }

    const SelectionSet& set_;
    DataItems items_;
    std::vector<const SelectionGesture*> polygons_;
};

} // namespace

DataItems tellSelection(const SelectionSet& set, int index) {
    Telling telling(set);
    const auto& ids = set.ids();
    if (index < 0) {
        for (const AcDbObjectId id : ids)
            telling.entityInList(id);
    } else if (static_cast<std::size_t>(index) < ids.size()) {
        telling.entity(ids[static_cast<std::size_t>(index)]);
    }
    return telling.withPolygons();
}

} // namespace headless
