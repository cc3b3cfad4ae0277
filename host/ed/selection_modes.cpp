#include "ed/selection_modes.h"

#include <cmath>

#include "db/resbuf.h"
#include "ed/user_coordinates.h"

namespace headless {

namespace {

using Outline = std::vector<AcGePoint2d>;

/// Where a point of user coordinates is seen.
std::optional<AcGePoint2d> seen(const AcDbDatabase& db, const void* point) {
    if (point == nullptr) return std::nullopt;
    const auto* const given = static_cast<const ads_real*>(point);
    const AcGePoint2d place =
        placeInView(db, userToWorld(db) * AcGePoint3d(given[0], given[1], given[2]));
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
    for (const auto* buffer = static_cast<const resbuf*>(chain); buffer != nullptr;
         buffer = buffer->rbnext) {
        if (valueKind(buffer->restype) != ValueKind::kPoint) continue;
        const auto place = seen(db, buffer->resval.rpoint);
        if (!place) return std::nullopt;
        outline.push_back(*place);
    }
    if (outline.size() < least) return std::nullopt;
    return outline;
}

std::optional<Outline> pickBox(const AcDbDatabase& db, const void* point) {
    const auto place = seen(db, point);
    return place ? std::optional(pickBoxAround(db, *place)) : std::nullopt;
}

} // namespace

std::optional<std::vector<AcDbObjectId>> selectByMode(const AcDbDatabase& db,
                                                      std::wstring_view mode, const void* point1,
                                                      const void* point2, const Accepts& accepts) {
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

} // namespace headless
