// Whether drawn pieces lie in a region of the plane or cross it: what windows, crossing polygons,
// fences and pick boxes ask. Values in, values out; z is not looked at.
#pragma once

#include <span>
#include <vector>

#include "db/curve_piece.h"

namespace headless {

/// A polygon, closed and possibly crossing itself, or an open chain.
class Outline2d {
public:
    enum class Kind { closed, open };

    Outline2d(std::vector<AcGePoint2d> points, Kind kind);

    const Extents2d& box() const { return box_; }
    std::span<const AcGePoint2d> points() const { return points_; }
    bool isClosed() const { return kind_ == Kind::closed; }

    /// True for a point on the boundary or enclosed an odd number of times; an open chain encloses
    /// nothing.
    bool contains(const AcGePoint2d& point) const;
    /// Adds the parameters at which the piece, which lies at z = 0, meets the boundary.
    void addCuts(const CurvePiece& piece, std::vector<double>& params) const;

private:
    std::size_t edges() const { return isClosed() ? points_.size() : points_.size() - 1; }
    double tolerance() const;

    std::vector<AcGePoint2d> points_;
    Extents2d box_;
    Kind kind_;
};

/// A clip as seen in the plane.
struct VisibleRegion {
    Outline2d boundary;
    bool hidesInside = false;

    bool shows(const AcGePoint2d& point) const { return boundary.contains(point) != hidesInside; }
};

/// How the visible parts of a piece stand to a region.
struct Standing {
    bool touches = false; // Some visible point lies in the region, or on its chain.
    bool leaves = false;  // Some visible point lies outside.
};

/// @param piece  bounded, anywhere in space.
/// @param clips  all must show a point for it to be visible.
[[nodiscard]] Standing standingOf(const CurvePiece& piece, const Outline2d& region,
                                  std::span<const VisibleRegion> clips);

} // namespace headless
