// Curves of lines and arcs as values: what they consist of from vertex to vertex.
#pragma once

#include <vector>

#include <dbcurve.h>
#include <gemat3d.h>

namespace blocks {

/// A curve's range; what has no end is infinite there.
struct ParamRange {
    double from;
    double to;

    explicit ParamRange(const AcDbCurve& curve);
    /// A parameter well between two.
    static double between(double first, double second);
};

/// Straight: origin + along (p - from), from an infinite parameter as if that were 0. Round, on a
/// circle or an ellipse: origin + cosine cos(a) + sine sin(a) with a = rate (p - from).
struct CurveStretch {
    double from = 0.0;
    double to = 0.0;
    AcGePoint3d origin = {};
    AcGeVector3d along = {};
    double rate = 0.0; ///< 0: straight.
    AcGeVector3d cosine = {};
    AcGeVector3d sine = {};

    [[nodiscard]] bool isRound() const { return rate != 0.0; }
    [[nodiscard]] CurveStretch under(const AcGeMatrix3d& transform) const;
};

/// The stretches of a line, an arc, a circle, an ellipse, a polyline of any kind or an endless
/// line, in order.
/// @param curve  open for reading, no spline.
[[nodiscard]] std::vector<CurveStretch> stretchesOf(const AcDbCurve& curve);

} // namespace blocks
