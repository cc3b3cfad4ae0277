// The areas that chains of lines and arcs with a width cover, in their own plane.
#pragma once

#include <span>
#include <vector>

#include "ge/bulge.h"
#include "ge/vector3d.h"

namespace headless {

class GeometrySink;

/// A segment and how wide it is at its ends; between them the width changes evenly.
struct WideSegment {
    BulgeSegment path;
    double startWidth = 0.0;
    double endWidth = 0.0;

    bool isWide() const { return startWidth > 0.0 || endWidth > 0.0; }
};

using PlanePolygon = std::vector<AcGePoint2d>;

/// One polygon for each segment that has a width and a length, and one for each bevel. All turn
/// counter-clockwise unless tapering makes them cross themselves, so that together they cover what
/// any of them encloses. Straight segments meet in mitres, or in a bevel where these would be long;
/// arcs are chords of two degrees.
/// @param closed  the last segment leads to the first.
[[nodiscard]] std::vector<PlanePolygon> wideAreas(std::span<const WideSegment> segments,
                                                  bool closed);

/// Tells a sink of these areas.
/// @param elevation, normal  where the chain's plane is in the world.
void describeWide(GeometrySink& sink, std::span<const WideSegment> segments, bool closed,
                  double elevation, const AcGeVector3d& normal);

} // namespace headless
