#include "blocks/curve_stretch.h"

#include <cmath>
#include <limits>

#include <dbelipse.h>
#include <dbents.h>
#include <dbpl.h>

namespace blocks {
namespace {

AcGePoint3d pointAt(const AcDbCurve& curve, double param) {
    AcGePoint3d point;
    curve.getPointAtParam(param, point);
    return point;
}

AcGeVector3d tangentAt(const AcDbCurve& curve, double param) {
    AcGeVector3d tangent;
    curve.getFirstDeriv(param, tangent);
    return tangent;
}

/// A stretch that runs evenly by its angle.
/// @param rate  how fast it turns by its parameter.
CurveStretch roundStretch(const AcDbCurve& curve, double from, double to, double rate) {
    // The second derivative points from the start to the centre, and is as long as the way there
    // times the square of the rate.
    AcGeVector3d bend;
    curve.getSecondDeriv(from, bend);
    const AcGeVector3d cosine = bend / (-rate * rate);
    return {.from = from,
            .to = to,
            .origin = pointAt(curve, from) - cosine,
            .rate = rate,
            .cosine = cosine,
            .sine = tangentAt(curve, from) / rate};
}

/// The way from one vertex of a polyline to the next.
CurveStretch segmentOf(const AcDbCurve& polyline, double vertex) {
    // An arc's tangent turns by half the sweep on the first half.
    const double turn = tangentAt(polyline, vertex).angleTo(tangentAt(polyline, vertex + 0.5));
    if (turn > 1e-12) return roundStretch(polyline, vertex, vertex + 1.0, 2.0 * turn);
    const AcGePoint3d start = pointAt(polyline, vertex);
    return {.from = vertex,
            .to = vertex + 1.0,
            .origin = start,
            .along = pointAt(polyline, vertex + 1.0) - start};
}

CurveStretch straightStretch(const AcDbCurve& line, const ParamRange& range) {
    const double anchor = std::isfinite(range.from) ? range.from : 0.0;
    return {.from = range.from,
            .to = range.to,
            .origin = pointAt(line, anchor),
            .along = tangentAt(line, anchor)};
}

bool isOfVertices(const AcDbCurve& curve) {
    return curve.isKindOf(AcDbPolyline::desc()) || curve.isKindOf(AcDb2dPolyline::desc()) ||
           curve.isKindOf(AcDb3dPolyline::desc());
}

bool isRound(const AcDbCurve& curve) {
    return curve.isKindOf(AcDbArc::desc()) || curve.isKindOf(AcDbCircle::desc()) ||
           curve.isKindOf(AcDbEllipse::desc());
}

} // namespace

ParamRange::ParamRange(const AcDbCurve& curve)
    : from(-std::numeric_limits<double>::infinity()), to(-from) {
    curve.getStartParam(from);
    curve.getEndParam(to);
}

double ParamRange::between(double first, double second) {
    if (std::isfinite(first) && std::isfinite(second)) return (first + second) / 2.0;
    if (std::isfinite(first)) return first + 1.0;
    return std::isfinite(second) ? second - 1.0 : 0.0;
}

CurveStretch CurveStretch::under(const AcGeMatrix3d& transform) const {
    CurveStretch moved = *this;
    moved.origin.transformBy(transform);
    for (AcGeVector3d* vector : {&moved.along, &moved.cosine, &moved.sine})
        vector->transformBy(transform);
    return moved;
}

std::vector<CurveStretch> stretchesOf(const AcDbCurve& curve) {
    const ParamRange range(curve);
    // Circles and ellipses run by their angle.
    if (isRound(curve)) return {roundStretch(curve, range.from, range.to, 1.0)};
    if (!isOfVertices(curve)) return {straightStretch(curve, range)};
    std::vector<CurveStretch> stretches;
    for (double vertex = range.from; vertex < range.to; vertex += 1.0)
        stretches.push_back(segmentOf(curve, vertex));
    return stretches;
}

} // namespace blocks
