// Common points of straight lines and arcs of circles and ellipses, anywhere in space.
//
// Curves meet where they come as near to each other as the tolerance, a length. Where they lie on
// each other along a stretch they have no single common points; two that only share an end have
// that one.
#pragma once

#include <limits>
#include <vector>

#include "ge/ellipse.h"

namespace headless {

/// origin + along * t for t from `from` to `to`, either of which may be infinite. `along` has some
/// length.
struct LinePart {
    AcGePoint3d origin;
    AcGeVector3d along;
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();

    [[nodiscard]] AcGePoint3d pointAt(double t) const noexcept { return origin + along * t; }
    /// Parameter of the nearest point of the part.
    [[nodiscard]] double nearestParam(const AcGePoint3d& point) const noexcept;
};

/// True for an arc that lies in no plane: its half diameters are parallel, or none.
[[nodiscard]] bool isFlattened(const EllipseArc& arc) noexcept;
[[nodiscard]] bool isCircular(const EllipseArc& arc) noexcept;

[[nodiscard]] std::vector<AcGePoint3d> cutLines(const LinePart& a, const LinePart& b,
                                                double tolerance);
/// @param arc  not flattened.
[[nodiscard]] std::vector<AcGePoint3d> cutArc(const EllipseArc& arc, const LinePart& line,
                                              double tolerance);

/// True for two arcs that cutArcs knows how to cut: of circles, of ellipses in planes that cross,
/// or of one ellipse.
[[nodiscard]] bool haveClosedForm(const EllipseArc& a, const EllipseArc& b) noexcept;
/// @param a, b  not flattened, and of closed form.
[[nodiscard]] std::vector<AcGePoint3d> cutArcs(const EllipseArc& a, const EllipseArc& b,
                                               double tolerance);

} // namespace headless
