#include "OrnCore/arc_line.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <dbpl.h>

#include "OrnCore/segment_intersection.h"

namespace {

using orncore::Segment;

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

AcGeVector3d unit(const AcGeVector2d& v) {
    const double length = orncore::norm(v);
    return length > 0.0 ? AcGeVector3d(v.x / length, v.y / length, 0.0) : AcGeVector3d();
}

/// Smallest angle between two undirected lines.
double angleBetween(double a, double b) {
    return std::abs(std::remainder(a - b, std::numbers::pi));
}

} // namespace

CArcLine::CArcLine(const AcGePoint3d& start, const AcGePoint3d& end, double bulge)
    : start_(start), end_(end), bulge_(bulge) {}

Segment CArcLine::GetSegment() const { return {flat(start_), flat(end_), bulge_}; }

double CArcLine::GetLength() const { return orncore::lengthOf(GetSegment()); }

double CArcLine::GetAngle() const {
    const AcGeVector2d chord = orncore::chordOf(GetSegment());
    const double angle = std::atan2(chord.y, chord.x);
    if (angle >= 0.0) return angle;
    // A tiny negative angle plus the full circle rounds to the full circle itself.
    constexpr double kFull = 2.0 * std::numbers::pi;
    return angle + kFull < kFull ? angle + kFull : 0.0;
}

double CArcLine::GetSweep() const { return orncore::sweepOf(bulge_); }

double CArcLine::GetRadius() const { return orncore::radiusOf(GetSegment()); }

bool CArcLine::GetCenter(AcGePoint3d& center) const {
    if (!IsArc()) return false;
    const Segment s = GetSegment();
    const double height = (1.0 - bulge_ * bulge_) / (4.0 * bulge_);
    center = At(orncore::chordMiddle(s) + orncore::leftOf(orncore::chordOf(s)) * height);
    return true;
}

AcGePoint3d CArcLine::GetMidPoint() const { return At(orncore::pointAt(GetSegment(), 0.0)); }

AcGePoint3d CArcLine::GetPointAt(double fraction) const {
    const double s = 2.0 * fraction - 1.0;
    // An arc's position is a tangent, which does not grow evenly with its length.
    const double position = IsArc() ? std::tan(std::atan(bulge_) * s) / bulge_ : s;
    return At(orncore::pointAt(GetSegment(), position));
}

AcGeVector3d CArcLine::GetStartTangent() const { return unit(orncore::startTangent(GetSegment())); }

AcGeVector3d CArcLine::GetEndTangent() const { return unit(orncore::endTangent(GetSegment())); }

std::vector<ZelArcLine> ZelArcLine::CreateLine(const AcDbPolyline* polyline) {
    std::vector<ZelArcLine> pieces;
    if (polyline == nullptr || polyline->numVerts() == 0) return pieces;
    const unsigned int count = polyline->numVerts();
    const unsigned int segments = polyline->isClosed() ? count : count - 1;
    const double sign = polyline->normal().z < 0.0 ? -1.0 : 1.0;
    const bool straight = polyline->isOnlyLines() != 0;
    pieces.reserve(segments);

    AcGePoint3d first;
    polyline->getPointAt(0, first);
    AcGePoint3d start = first;
    for (unsigned int i = 0; i < segments; ++i) {
        AcGePoint3d end = first;
        double bulge = 0.0;
        if (i + 1 < count) polyline->getPointAt(i + 1, end);
        if (!straight) polyline->getBulgeAt(i, bulge);
        if (start.x != end.x || start.y != end.y) pieces.emplace_back(start, end, sign * bulge);
        start = end;
    }
    return pieces;
}

std::vector<ZelArcLine> ZelArcLine::GetParallelLines(const std::vector<ZelArcLine>& pieces,
                                                     double angle, double tol) {
    std::vector<ZelArcLine> parallel;
    std::ranges::copy_if(pieces, std::back_inserter(parallel), [&](const ZelArcLine& piece) {
        return !piece.IsArc() && angleBetween(piece.GetAngle(), angle) <= tol;
    });
    return parallel;
}

int ZelArcLine::PtInLine(const AcGePoint3d& point, double tol) const {
    const Segment s = GetSegment();
    const AcGePoint2d p = flat(point);
    if (orncore::distanceToEnds(s, p) <= tol) return kOnEnd;
    if (orncore::distanceToCarrier(s, p) <= tol)
        return orncore::isBesideSegment(s, p) ? kOnPiece : kBeyond;
    return orncore::sideOf(s, p) > 0.0 ? kLeft : kRight;
}

double ZelArcLine::GetDistance(const AcGePoint3d& point) const {
    return orncore::distanceTo(GetSegment(), flat(point));
}

AcGePoint3d ZelArcLine::GetClosestPoint(const AcGePoint3d& point) const {
    return At(orncore::closestPoint(GetSegment(), flat(point)));
}

bool ZelArcLine::IsParallel(const ZelArcLine& other, double tol) const {
    return !IsArc() && !other.IsArc() && angleBetween(GetAngle(), other.GetAngle()) <= tol;
}

AcGePoint3dArray ZelArcLine::GetInterSect(const ZelArcLine& other, double tol) const {
    AcGePoint3dArray points;
    for (const AcGePoint2d& p : orncore::intersect(GetSegment(), other.GetSegment(), tol))
        points.append(At(p));
    return points;
}

AcGePoint3dArray ZelArcLine::GetCarrierInterSect(const ZelArcLine& other) const {
    AcGePoint3dArray points;
    const Segment s = GetSegment();
    for (const double position : orncore::carrierCrossings(s, other.GetSegment()))
        points.append(At(orncore::pointAt(s, position)));
    return points;
}

AcGePoint3dArray ZelArcLine::GetTangentPoints(const AcGePoint3d& point) const {
    AcGePoint3dArray touching;
    AcGePoint3d center;
    if (!GetCenter(center)) return touching;
    const AcGeVector2d toPoint = flat(point) - flat(center);
    const double square = orncore::dot(toPoint, toPoint);
    const double radius = GetRadius();
    const double reach = square - radius * radius;
    if (reach < 0.0) return touching;

    const AcGeVector2d along = toPoint * (radius * radius / square);
    const AcGeVector2d across = orncore::leftOf(toPoint) * (radius * std::sqrt(reach) / square);
    const Segment s = GetSegment();
    for (const AcGePoint2d& p : {flat(center) + along - across, flat(center) + along + across}) {
        if (orncore::isBesideSegment(s, p)) touching.append(At(p));
    }
    if (reach == 0.0 && touching.length() == 2) touching.removeLast();
    return touching;
}

bool ZelArcLine::GetTangentCorner(AcGePoint3d& corner) const {
    if (!IsArc() || std::abs(GetBulge()) >= 1.0) return false;
    const Segment s = GetSegment();
    const double height = GetBulge() / (1.0 - GetBulge() * GetBulge());
    corner = At(orncore::chordMiddle(s) - orncore::leftOf(orncore::chordOf(s)) * height);
    return true;
}

bool ZelArcLine::GetOffset(double distance, ZelArcLine& parallel) const {
    // The centre lies on the left of a counter-clockwise arc.
    const double towardsCentre = GetBulge() > 0.0 ? distance : -distance;
    constexpr double kNoRadius = 1e-9; // what rounding leaves of one
    if (IsArc() && GetRadius() - towardsCentre <= kNoRadius) return false;
    const auto moved = [&](const AcGePoint3d& p, const AcGeVector3d& direction) {
        return AcGePoint3d(p.x - direction.y * distance, p.y + direction.x * distance, p.z);
    };
    parallel = ZelArcLine(moved(GetStart(), GetStartTangent()), moved(GetEnd(), GetEndTangent()),
                          GetBulge());
    return true;
}

ZelArcLine ZelArcLine::GetPart(const AcGePoint3d& from, const AcGePoint3d& to) const {
    const Segment s = GetSegment();
    const auto position = [&](const AcGePoint3d& p) {
        return orncore::positionOf(s, orncore::closestPoint(s, flat(p)));
    };
    const Segment part = orncore::partOf(s, position(from), position(to));
    return {At(part.start), At(part.end), part.bulge};
}

ZelArcLine ZelArcLine::GetReverse() const { return {GetEnd(), GetStart(), -GetBulge()}; }
