#include "db/piece_cuts.h"

#include <cmath>
#include <variant>

#include "ge/angles.h"
#include "ge/curve_cuts.h"

namespace headless {

namespace {

/// A piece as one of the shapes that have closed forms, or as any other curve.
using Shape = std::variant<LinePart, EllipseArc, std::vector<RationalBezier>>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Shape shapeOf(const CurvePiece& piece, PieceReach reach) {
    switch (piece.kind()) {
    case CurvePiece::Kind::segment:
        return LinePart{piece.start(), piece.end() - piece.start(),
                        reach.beyondStart ? -kInfinity : 0.0, reach.beyondEnd ? kInfinity : 1.0};
    case CurvePiece::Kind::endless:
        return LinePart{piece.pointAt(0.0), piece.firstDerivative(0.0),
                        reach.beyondStart ? -kInfinity : piece.startParam(), piece.endParam()};
    case CurvePiece::Kind::bulge:
    case CurvePiece::Kind::arc: {
        EllipseArc arc = piece.ellipseArc();
        if (reach.beyondStart || reach.beyondEnd) arc.sweep = kFullTurn;
        if (isFlattened(arc)) return arcBeziers(arc);
        if (piece.isShallow() && arc.sweep != kFullTurn) return piece.beziers();
        return arc;
    }
    case CurvePiece::Kind::spline:
        break;
    }
    return piece.beziers();
}

Extents3d controlBox(const std::vector<RationalBezier>& curves) {
    Extents3d box;
    for (const RationalBezier& curve : curves)
        for (const Homogeneous& h : curve)
            box.add((h.p / h.w).asPoint());
    return box;
}

/// The stretch of a line that can be near a box, as a curve.
std::vector<RationalBezier> lineBezier(const LinePart& line, const Extents3d& near) {
    const AcGePoint3d middle = near.min + (near.max - near.min) / 2.0;
    const double reach = near.min.distanceTo(near.max) / line.along.length() + 1e-9;
    const double at = (middle - line.origin).dotProduct(line.along) / line.along.lengthSqrd();
    const double from = std::max(line.from, at - reach);
    const double to = std::min(line.to, at + reach);
    if (!(from < to)) return {};
    return {{{line.pointAt(from).asVector(), 1.0}, {line.pointAt(to).asVector(), 1.0}}};
}

std::vector<RationalBezier> beziersOf(const Shape& shape, const Shape& other) {
    if (const auto* const arc = std::get_if<EllipseArc>(&shape)) return arcBeziers(*arc);
    if (const auto* const line = std::get_if<LinePart>(&shape))
        return lineBezier(*line, controlBox(beziersOf(other, shape)));
    return std::get<std::vector<RationalBezier>>(shape);
}

std::vector<AcGePoint3d> cutShapes(const Shape& a, const Shape& b, double tolerance) {
    const auto* const lineA = std::get_if<LinePart>(&a);
    const auto* const lineB = std::get_if<LinePart>(&b);
    const auto* const arcA = std::get_if<EllipseArc>(&a);
    const auto* const arcB = std::get_if<EllipseArc>(&b);
    if (lineA != nullptr && lineB != nullptr) return cutLines(*lineA, *lineB, tolerance);
    if (arcA != nullptr && lineB != nullptr) return cutArc(*arcA, *lineB, tolerance);
    if (lineA != nullptr && arcB != nullptr) return cutArc(*arcB, *lineA, tolerance);
    if (arcA != nullptr && arcB != nullptr && haveClosedForm(*arcA, *arcB))
        return cutArcs(*arcA, *arcB, tolerance);
    return cutBeziers(beziersOf(a, b), beziersOf(b, a), tolerance);
}

bool isPoint(const CurvePiece& piece) {
    return piece.kind() == CurvePiece::Kind::segment && piece.start() == piece.end();
}

/// The place of a piece without length when the other one passes through it.
std::vector<AcGePoint3d> cutPoint(const AcGePoint3d& point, const CurvePiece& other,
                                  PieceReach reach, double tolerance) {
    const double param = other.nearestParam(point, reach.beyondStart, reach.beyondEnd);
    if (!(other.pointAt(param).distanceTo(point) <= tolerance)) return {};
    return {point};
}

} // namespace

std::vector<AcGePoint3d> cutPieces(const CurvePiece& a, PieceReach reachA, const CurvePiece& b,
                                   PieceReach reachB, double tolerance) {
    if (isPoint(a)) return cutPoint(a.start(), b, reachB, tolerance);
    if (isPoint(b)) return cutPoint(b.start(), a, reachA, tolerance);
    return cutShapes(shapeOf(a, reachA), shapeOf(b, reachB), tolerance);
}

} // namespace headless
