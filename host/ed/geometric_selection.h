// Selecting entities by what of them is drawn where: windows, crossing polygons, fences, pick
// boxes.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "db/database.h"
#include "ge/matrix3d.h"
#include "ge/point2d.h"

class AcDbEntity;

namespace headless {

enum class PickBy {
    window,   // all that is drawn of an entity lies inside the outline
    crossing, // something of it lies inside or on the outline
    fence     // something of it lies on the open chain
};

/// Which entities may be selected; null for all.
using Accepts = std::function<bool(const AcDbEntity&)>;

/// The entities of the current space that stand so to an outline, the newest first.
///
/// Geometry is exact: curves by themselves, texts by their boxes, hatches by the area they fill,
/// references by their contents at any depth as far as their clips show them. What is invisible or
/// on a layer that is off, frozen or hidden does not count, in blocks neither; contents on layer 0
/// are on that of their reference.
/// @param outline  in the current view's own coordinates (DCS), x and y.
/// @param most     ends the search when that many were found.
[[nodiscard]] std::vector<AcDbObjectId> selectByPlace(const AcDbDatabase& db, PickBy how,
                                                      std::vector<AcGePoint2d> outline,
                                                      const Accepts& accepts = {},
                                                      std::size_t most = SIZE_MAX);

/// What of an entity stands in an outline.
struct NestedEntity {
    AcDbObjectId entity;                  // one in a block, an attribute, or the entity itself
    AcGeMatrix3d toWorld;                 // from the coordinates of its block
    std::vector<AcDbObjectId> containers; // the references that show its block, innermost first
};
/// @param id       an entity of the current space.
/// @param outline  as above; crossing it is enough.
[[nodiscard]] std::optional<NestedEntity> entityWithin(const AcDbDatabase& db, AcDbObjectId id,
                                                       std::vector<AcGePoint2d> outline);

/// A place of the world as the current view shows it (regardless of perspective).
[[nodiscard]] AcGePoint2d placeInView(const AcDbDatabase& db, const AcGePoint3d& point);

/// The corners of a box along the view's axes, and of the pick box (PICKBOX pixels around a point).
[[nodiscard]] std::vector<AcGePoint2d> boxBetween(const AcGePoint2d& a, const AcGePoint2d& b);
[[nodiscard]] std::vector<AcGePoint2d> pickBoxAround(const AcDbDatabase& db, const AcGePoint2d& at);

} // namespace headless
