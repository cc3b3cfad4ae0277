#include "db/curve_piece.h"

#include <algorithm>
#include <cmath>

#include "ge/angles.h"

namespace headless {

CurvePiece CurvePiece::segment(const AcGePoint3d& start, const AcGePoint3d& end, double startParam,
                               double endParam) {
    CurvePiece piece(Kind::segment, startParam, endParam);
    piece.origin_ = start;
    piece.end_ = end;
    return piece;
}

CurvePiece CurvePiece::bulgeArc(const AcGePoint3d& start, const AcGePoint3d& end,
                                const AcGeVector3d& normal, double bulge, double startParam,
                                double endParam) {
    CurvePiece piece(Kind::bulge, startParam, endParam);
    piece.u_ = (end - start) / 2.0;
    piece.v_ = normal.crossProduct(piece.u_);
    piece.origin_ = start + piece.u_;
    piece.bulge_ = bulge;
    return piece;
}

CurvePiece CurvePiece::arc(const AcGePoint3d& center, const AcGeVector3d& u, const AcGeVector3d& v,
                           double startParam, double endParam) {
    CurvePiece piece(Kind::arc, startParam, endParam);
    piece.origin_ = center;
    piece.u_ = u;
    piece.v_ = v;
    return piece;
}

CurvePiece CurvePiece::endless(const AcGePoint3d& origin, const AcGeVector3d& direction,
                               double startParam, double endParam) {
    CurvePiece piece(Kind::endless, startParam, endParam);
    piece.origin_ = origin;
    piece.u_ = direction;
    return piece;
}

CurvePiece CurvePiece::spline(std::shared_ptr<const Spline> curve) {
    CurvePiece piece(Kind::spline, curve->startParam(), curve->endParam());
    piece.spline_ = std::move(curve);
    return piece;
}

double CurvePiece::share(double param) const {
    const double range = endParam_ - startParam_;
    return range == 0.0 ? 0.0 : (param - startParam_) / range;
}

double CurvePiece::paramAtShare(double share) const {
    return startParam_ + share * (endParam_ - startParam_);
}

BulgeSegment CurvePiece::unitArc() const { return {{-1.0, 0.0}, {1.0, 0.0}, bulge_}; }

bool CurvePiece::isCircular() const {
    const double size = u_.lengthSqrd();
    constexpr double kRelative = 1e-12;
    return std::abs(v_.lengthSqrd() - size) <= kRelative * size &&
           std::abs(u_.dotProduct(v_)) <= kRelative * size;
}

AcGePoint3d CurvePiece::pointAt(double param) const {
    switch (kind_) {
    case Kind::segment: {
        const double s = share(param);
        return s == 1.0 ? end_ : origin_ + (end_ - origin_) * s;
    }
    case Kind::bulge: {
        const AcGePoint2d p = pointOnSegment(unitArc(), share(param));
        return inFrame(p.x, p.y);
    }
    case Kind::arc:
        return inFrame(std::cos(param), std::sin(param));
    case Kind::endless:
        return origin_ + u_ * param;
    case Kind::spline:
        return spline_->pointAt(param);
    }
    return origin_;
}

AcGeVector3d CurvePiece::firstDerivative(double param) const {
    switch (kind_) {
    case Kind::segment: {
        const double range = endParam_ - startParam_;
        return range == 0.0 ? AcGeVector3d() : (end_ - origin_) / range;
    }
    case Kind::bulge: {
        const AcGeVector2d t = tangentOfSegment(unitArc(), share(param));
        return (u_ * t.x + v_ * t.y) * (arcLength(2.0, bulge_) / (endParam_ - startParam_));
    }
    case Kind::arc:
        return u_ * -std::sin(param) + v_ * std::cos(param);
    case Kind::endless:
        return u_;
    case Kind::spline:
        return spline_->derivativeAt(param, 1);
    }
    return {};
}

AcGeVector3d CurvePiece::secondDerivative(double param) const {
    switch (kind_) {
    case Kind::segment:
    case Kind::endless:
        return {};
    case Kind::bulge: {
        const AcGeVector2d t = tangentOfSegment(unitArc(), share(param));
        const double range = endParam_ - startParam_;
        const double sweep = 4.0 * std::atan(bulge_);
        return (u_ * -t.y + v_ * t.x) * (arcLength(2.0, bulge_) * sweep / (range * range));
    }
    case Kind::arc:
        return u_ * -std::cos(param) - v_ * std::sin(param);
    case Kind::spline:
        return spline_->derivativeAt(param, 2);
    }
    return {};
}

EllipseArc CurvePiece::ellipseArc() const {
    if (kind_ == Kind::arc) return {origin_, u_, v_, startParam_, endParam_ - startParam_};
    // The bulge arc's circle in its frame, from the middle of the arc as angle 0.
    const double radius = (1.0 + bulge_ * bulge_) / (2.0 * bulge_);
    const double sweep = 4.0 * std::atan(bulge_);
    return {inFrame(0.0, radius - bulge_), v_ * -radius, u_ * radius, -sweep / 2.0, sweep};
}

double CurvePiece::lengthTo(double param) const {
    switch (kind_) {
    case Kind::segment:
        return (end_ - origin_).length() * share(param);
    case Kind::endless:
        return u_.length() * (param - startParam_);
    case Kind::bulge: {
        if (isCircular()) return arcLength(2.0, bulge_) * u_.length() * share(param);
        const EllipseArc arc = ellipseArc();
        return ellipseLength(arc, arc.start, arc.start + arc.sweep * share(param));
    }
    case Kind::arc:
        if (isCircular()) return u_.length() * (param - startParam_);
        return ellipseLength(ellipseArc(), startParam_, param);
    case Kind::spline:
        return splineLength(*spline_, startParam_, param);
    }
    return 0.0;
}

double CurvePiece::paramAtLength(double length) const {
    if (kind_ == Kind::endless) return startParam_ + length / u_.length();
    const double total = this->length();
    if (total == 0.0) return startParam_;
    double param = paramAtShare(std::clamp(length / total, 0.0, 1.0));
    if (kind_ == Kind::segment || (kind_ != Kind::spline && isCircular())) return param;

    // Newton's steps, kept inside the bracket that the length's growth gives.
    double low = startParam_;
    double high = endParam_;
    for (int step = 0; step < 64; ++step) {
        const double excess = lengthTo(param) - length;
        if (std::abs(excess) <= 1e-14 * total) break;
        (excess > 0.0 ? high : low) = param;
        const double speed = firstDerivative(param).length();
        const double next = speed > 0.0 ? param - excess / speed : low;
        param = next > low && next < high ? next : (low + high) / 2.0;
    }
    return param;
}

double CurvePiece::nearestParam(const AcGePoint3d& point, bool freeStart, bool freeEnd) const {
    switch (kind_) {
    case Kind::segment:
        return nearestOnSegment(point, freeStart, freeEnd);
    case Kind::endless: {
        const double param = (point - origin_).dotProduct(u_) / u_.lengthSqrd();
        return freeStart ? param : std::max(param, startParam_);
    }
    case Kind::bulge:
        return nearestOnBulge(point, freeStart || freeEnd);
    case Kind::arc:
        return nearestOnArc(point, freeStart || freeEnd);
    case Kind::spline:
        return splineClosestParam(*spline_, point);
    }
    return startParam_;
}

double CurvePiece::nearestOnSegment(const AcGePoint3d& point, bool freeStart, bool freeEnd) const {
    const AcGeVector3d chord = end_ - origin_;
    const double size = chord.lengthSqrd();
    if (size == 0.0) return startParam_;
    double s = (point - origin_).dotProduct(chord) / size;
    if (!freeStart) s = std::max(s, 0.0);
    if (!freeEnd) s = std::min(s, 1.0);
    return paramAtShare(s);
}

double CurvePiece::nearestOnBulge(const AcGePoint3d& point, bool free) const {
    const double size = u_.lengthSqrd();
    if (size == 0.0) return startParam_;
    const AcGeVector3d offset = point - origin_;
    const double x = offset.dotProduct(u_) / size;
    const double y = offset.dotProduct(v_) / size;
    // The angle at the centre from the arc's middle, free of the centre's own coordinates.
    const double angle = std::atan2(2.0 * bulge_ * x, 1.0 - bulge_ * bulge_ - 2.0 * bulge_ * y);
    const double s = 0.5 + angle / (4.0 * std::atan(bulge_));
    if (free || (s >= 0.0 && s <= 1.0)) return paramAtShare(s);
    return x < 0.0 ? startParam_ : endParam_;
}

double CurvePiece::nearestOnArc(const AcGePoint3d& point, bool free) const {
    if (!isCircular()) {
        EllipseArc arc = ellipseArc();
        if (free) arc.sweep = kFullTurn;
        return ellipseClosestParam(arc, point);
    }
    const AcGeVector3d offset = point - origin_;
    const double angle = std::atan2(offset.dotProduct(v_), offset.dotProduct(u_));
    const double param = startParam_ + normalizedAngle(angle - startParam_);
    if (free || param <= endParam_) return param;
    // Beyond the end: the nearer of both ends, by angle.
    return param - endParam_ < startParam_ + kFullTurn - param ? endParam_ : startParam_;
}

AcGeVector3d CurvePiece::areaAbout(const AcGePoint3d& origin) const {
    if (kind_ == Kind::endless) return {};
    const AcGeVector3d from = start() - origin;
    const AcGeVector3d to = end() - origin;
    if (kind_ == Kind::spline) return splineVectorArea(*spline_) + from.crossProduct(to) / 2.0;
    if (kind_ == Kind::arc) {
        const double sweep = endParam_ - startParam_;
        return ((origin_ - origin).crossProduct(to - from) + u_.crossProduct(v_) * sweep) / 2.0;
    }
    AcGeVector3d area = from.crossProduct(to) / 2.0;
    if (kind_ == Kind::bulge) area += u_.crossProduct(v_) * circularSegmentArea(2.0, bulge_);
    return area;
}

Extents3d CurvePiece::extents() const {
    switch (kind_) {
    case Kind::bulge:
        return bulgeExtents();
    case Kind::arc:
        return ellipseExtents(ellipseArc());
    case Kind::spline:
        return splineExtents(*spline_);
    case Kind::segment:
    case Kind::endless:
        break;
    }
    Extents3d box;
    if (kind_ == Kind::segment) {
        box.add(origin_);
        box.add(end_);
    }
    return box;
}

Extents3d CurvePiece::bulgeExtents() const {
    Extents3d box;
    for (unsigned axis = 0; axis < 3; ++axis) {
        const AcGeVector2d along(u_[axis], v_[axis]);
        box.addRange(axis, origin_[axis] - farthestAlong(unitArc(), -along),
                     origin_[axis] + farthestAlong(unitArc(), along));
    }
    return box;
}

bool CurvePiece::isShallow() const {
    constexpr double kShallowBulge = 1e-3; // A radius of 250 chords.
    return kind_ == Kind::bulge && std::abs(bulge_) < kShallowBulge;
}

std::vector<RationalBezier> CurvePiece::beziers() const {
    const auto at = [](const AcGePoint3d& point, double weight = 1.0) {
        return Homogeneous{point.asVector() * weight, weight};
    };
    switch (kind_) {
    case Kind::segment:
        return {{at(origin_), at(end_)}};
    case Kind::bulge:
        if (!isShallow()) return arcBeziers(ellipseArc());
        // The tangents at both ends meet beyond the arc's middle.
        return {{at(inFrame(-1.0, 0.0)),
                 at(inFrame(0.0, -2.0 * bulge_ / (1.0 - bulge_ * bulge_)),
                    std::cos(2.0 * std::atan(bulge_))),
                 at(inFrame(1.0, 0.0))}};
    case Kind::arc:
        return arcBeziers(ellipseArc());
    case Kind::spline: {
        std::vector<RationalBezier> curves;
        for (BezierPiece& piece : bezierPieces(*spline_))
            curves.push_back(std::move(piece.points));
        return curves;
    }
    case Kind::endless:
        break;
    }
    return {};
}

CurvePiece CurvePiece::transformed(const AcGeMatrix3d& transform) const {
    CurvePiece piece = *this;
    if (kind_ == Kind::spline) {
        const auto moved = std::make_shared<Spline>(*spline_);
        moved->transformBy(transform);
        piece.spline_ = moved;
        return piece;
    }
    piece.origin_ = transform * origin_;
    piece.end_ = transform * end_;
    piece.u_ = transform * u_;
    piece.v_ = transform * v_;
    return piece;
}

} // namespace headless
