#include "view/crowd.h"

#include <algorithm>
#include <cmath>

#include "db/block_table.h"
#include "db/residence.h"

namespace headless {
namespace {

std::int32_t wholePixels(double value) {
    constexpr double kFar = 1e9;
    return static_cast<std::int32_t>(std::floor(std::clamp(value, -kFar, kFar)));
}

/// How many entities drawing it takes.
double costOf(const PlacedBlock& placed) {
    const auto* const record = Residence::peek<AcDbBlockTableRecord>(placed.block);
    return record == nullptr ? 1.0 : static_cast<double>(record->entityIds().size());
}

} // namespace

SheetBox boxOnSheet(const AcDbExtents& box, const AcGeMatrix3d& toWorld, const SheetMap& map) {
    SheetBox shown;
    if (headless::isEmpty(box)) return shown;
    AcDbExtents placed = box;
    placed.transformBy(toWorld);
    shown.add(map(placed.minPoint()));
    shown.add(map(placed.maxPoint()));
    return shown;
}

bool isSpeck(const SheetBox& shown) {
    return !shown.isEmpty() && shown.width() < 1.0 && shown.height() < 1.0;
}

std::size_t Crowd::HashOf::operator()(const Place& place) const {
    std::size_t hash = std::hash<void*>()(place.block);
    for (const std::int32_t corner : place.corners)
        hash = (hash ^ static_cast<std::uint32_t>(corner)) * 0x9E3779B97F4A7C15U;
    return hash ^ hash >> 32U;
}

void Crowd::add(PlacedBlock placed) {
    const AcDbExtents& box = facts_.boxOf(placed.block);
    if (!headless::isEmpty(box)) {
        const AcGePoint3d low = box.minPoint();
        const AcGePoint3d high = box.maxPoint();
        Place place{placed.block, {}, placed.traits};
        std::size_t next = 0;
        for (const AcGePoint3d& corner :
             {low, AcGePoint3d(high.x, low.y, low.z), AcGePoint3d(low.x, high.y, high.z)}) {
            const AcGePoint2d at = map_(placed.toWorld * corner);
            place.corners[next++] = wholePixels(at.x);
            place.corners[next++] = wholePixels(at.y);
        }
        if (!places_.insert(place).second) return;
    }
    placed_.push_back(std::move(placed));
}

std::vector<PlacedBlock> Crowd::take(double parts) {
    std::vector<PlacedBlock> taken;
    taken.swap(placed_);
    places_.clear();
    double all = 0.0;
    for (const PlacedBlock& placed : taken)
        all += costOf(placed);
    const double share = parts / all;
    if (share >= 1.0) return taken;
    // By steps of the golden section no pattern in the order decides which are taken.
    constexpr double kGolden = 0.6180339887498949;
    std::vector<PlacedBlock> sample;
    double turn = 0.0;
    for (PlacedBlock& placed : taken) {
        if (turn < share) sample.push_back(std::move(placed));
        turn = std::fmod(turn + kGolden, 1.0);
    }
    return sample;
}

} // namespace headless
