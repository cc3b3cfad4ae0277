#include "db/curve_part.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "db/arc.h"
#include "db/circle.h"
#include "db/dxf_fields.h"
#include "db/ellipse.h"
#include "db/line.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/ray.h"
#include "db/spline.h"
#include "db/xline.h"

namespace headless {
namespace {

AcGePoint3d pointAt(const AcDbCurve& curve, double param) {
    AcGePoint3d point;
    curve.getPointAtParam(param, point);
    return point;
}

template <class Curve>
std::unique_ptr<Curve> copyOf(const Curve& curve) {
    return std::unique_ptr<Curve>(Curve::cast(curve.clone()));
}

std::unique_ptr<AcDbCurve> withProperties(std::unique_ptr<AcDbCurve> part, const AcDbCurve& curve) {
    part->setPropertiesFrom(&curve);
    return part;
}

std::unique_ptr<AcDbCurve> partOfLine(const AcDbLine& line, double from, double to) {
    auto part = copyOf(line);
    part->setStartPoint(pointAt(line, from));
    part->setEndPoint(pointAt(line, to));
    return part;
}

std::unique_ptr<AcDbCurve> partOfArc(const AcDbArc& arc, double from, double to) {
    auto part = copyOf(arc);
    part->setStartAngle(from);
    part->setEndAngle(to);
    return part;
}

std::unique_ptr<AcDbCurve> partOfCircle(const AcDbCircle& circle, double from, double to) {
    auto part =
        std::make_unique<AcDbArc>(circle.center(), circle.normal(), circle.radius(), from, to);
    part->setThickness(circle.thickness());
    return withProperties(std::move(part), circle);
}

std::unique_ptr<AcDbCurve> partOfEllipse(const AcDbEllipse& ellipse, double from, double to) {
    auto part = copyOf(ellipse);
    part->setStartParam(from);
    part->setEndParam(to);
    return part;
}

/// One end of a ray or one half of a line without ends, or what lies between two points of it.
std::unique_ptr<AcDbCurve> partOfEndless(const EndlessLine& line, double from, double to) {
    const auto at = [&](double param) { return line.basePoint() + line.unitDir() * param; };
    if (std::isfinite(from) && std::isfinite(to))
        return withProperties(std::make_unique<AcDbLine>(at(from), at(to)), line);
    auto part = std::make_unique<AcDbRay>();
    part->setBasePoint(at(std::isfinite(from) ? from : to));
    part->setUnitDir(std::isfinite(from) ? line.unitDir() : -line.unitDir());
    return withProperties(std::move(part), line);
}

/// The stretches from one vertex to the next between two parameters, the first and the last cut
/// short: calls take(index of the segment, share where it begins, share where it ends).
template <class Take>
void eachSegment(double from, double to, int count, Take take) {
    for (double at = from; at < to;) {
        const double vertex = std::floor(at);
        const double next = std::min(vertex + 1.0, to);
        take(static_cast<int>(vertex) % count, at - vertex, next - vertex);
        at = next;
    }
}

double partOfBulge(double bulge, double share) {
    return share == 1.0 ? bulge : std::tan(std::atan(bulge) * share);
}

/// The parameter within the curve's range.
double turnedBack(double param, double end) { return param > end ? param - end : param; }

std::unique_ptr<AcDbCurve> partOfPolyline(const AcDbPolyline& polyline, double from, double to) {
    double end = 0.0;
    polyline.getEndParam(end);
    auto part = copyOf(polyline);
    part->reset(false, 0);
    part->setClosed(false);
    const auto flat = [&](double param) {
        const AcGePoint3d point =
            worldToOcs(pointAt(polyline, turnedBack(param, end)), polyline.normal());
        return AcGePoint2d(point.x, point.y);
    };
    double at = from;
    eachSegment(from, to, static_cast<int>(end), [&](int segment, double begin, double stop) {
        const auto index = static_cast<unsigned>(segment);
        double bulge = 0.0;
        double first = 0.0;
        double last = 0.0;
        polyline.getBulgeAt(index, bulge);
        polyline.getWidthsAt(index, first, last);
        part->addVertexAt(part->numVerts(), flat(at), partOfBulge(bulge, stop - begin),
                          first + (last - first) * begin, first + (last - first) * stop);
        at += stop - begin;
    });
    part->addVertexAt(part->numVerts(), flat(to));
    return part;
}

/// The bulge of the arc from one parameter to a later one of the same segment; 0 for a straight
/// one.
double bulgeBetween(const AcDb2dPolyline& polyline, double from, double to) {
    AcGeVector3d before;
    AcGeVector3d halfway;
    polyline.getFirstDeriv(from, before);
    polyline.getFirstDeriv((from + to) / 2.0, halfway);
    // The tangent turns by half the sweep up to there.
    const double turn = std::atan2(before.crossProduct(halfway).dotProduct(polyline.normal()),
                                   before.dotProduct(halfway));
    return std::abs(turn) < 1e-12 ? 0.0 : std::tan(turn / 2.0);
}

std::unique_ptr<AcDbCurve> partOf2dPolyline(const AcDb2dPolyline& polyline, double from,
                                            double to) {
    double end = 0.0;
    polyline.getEndParam(end);
    AcGePoint3dArray points;
    AcGeDoubleArray bulges;
    const auto add = [&](double param, double bulge) {
        points.append(worldToOcs(pointAt(polyline, turnedBack(param, end)), polyline.normal()));
        bulges.append(bulge);
    };
    double at = from;
    eachSegment(from, to, static_cast<int>(end), [&](int segment, double begin, double stop) {
        add(at, bulgeBetween(polyline, segment + begin, segment + stop));
        at += stop - begin;
    });
    add(to, 0.0);
    auto part = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, points, polyline.elevation(),
                                                 false, polyline.defaultStartWidth(),
                                                 polyline.defaultEndWidth(), &bulges);
    part->setNormal(polyline.normal());
    part->setThickness(polyline.thickness());
    return withProperties(std::move(part), polyline);
}

std::unique_ptr<AcDbCurve> partOf3dPolyline(const AcDb3dPolyline& polyline, double from,
                                            double to) {
    double end = 0.0;
    polyline.getEndParam(end);
    AcGePoint3dArray points;
    double at = from;
    eachSegment(from, to, static_cast<int>(end), [&](int /*segment*/, double begin, double stop) {
        points.append(pointAt(polyline, turnedBack(at, end)));
        at += stop - begin;
    });
    points.append(pointAt(polyline, turnedBack(to, end)));
    return withProperties(
        std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points, Adesk::kFalse), polyline);
}

} // namespace

std::unique_ptr<AcDbCurve> partOf(const AcDbCurve& curve, double from, double to) {
    if (const auto* line = AcDbLine::cast(&curve)) return partOfLine(*line, from, to);
    if (const auto* arc = AcDbArc::cast(&curve)) return partOfArc(*arc, from, to);
    if (const auto* circle = AcDbCircle::cast(&curve)) return partOfCircle(*circle, from, to);
    if (const auto* ellipse = AcDbEllipse::cast(&curve)) return partOfEllipse(*ellipse, from, to);
    if (const auto* flat = AcDbPolyline::cast(&curve)) return partOfPolyline(*flat, from, to);
    if (const auto* flat = AcDb2dPolyline::cast(&curve)) return partOf2dPolyline(*flat, from, to);
    if (const auto* path = AcDb3dPolyline::cast(&curve)) return partOf3dPolyline(*path, from, to);
    if (const auto* spline = AcDbSpline::cast(&curve)) return spline->partBetween(from, to);
    if (const auto* endless = dynamic_cast<const EndlessLine*>(&curve))
        return partOfEndless(*endless, from, to);
    return nullptr;
}

} // namespace headless

namespace {

/// A curve's range; what has no end is infinite there.
struct Range {
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();

    explicit Range(const AcDbCurve& curve) {
        curve.getStartParam(from);
        curve.getEndParam(to);
    }
};

/// The parameters in order without repetitions and ends; nothing when one is beyond the ends.
std::optional<std::vector<double>> cutsOf(const AcGeDoubleArray& params, const Range& range,
                                          bool keepStart) {
    std::vector<double> cuts;
    for (int i = 0; i < params.length(); ++i) {
        const double param = params[i];
        if (!(param >= range.from && param <= range.to)) return std::nullopt;
        if (param > range.from && param < range.to)
            cuts.push_back(param);
        else if (keepStart)
            cuts.push_back(range.from);
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    return cuts;
}

} // namespace

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray& params,
                                            AcDbVoidPtrArray& curves) const {
    assertReadEnabled();
    const Range range(*this);
    const bool turns = isClosed() && AcDbSpline::cast(this) == nullptr;
    std::optional<std::vector<double>> cuts = cutsOf(params, range, turns);
    // An arc of a whole turn would have no length: a circle needs a second cut.
    const std::size_t least = AcDbCircle::cast(this) == nullptr ? 1 : 2;
    if (!cuts || cuts->size() < least) return Acad::eInvalidInput;
    if (turns) {
        cuts->push_back(cuts->front() + range.to - range.from);
    } else {
        cuts->insert(cuts->begin(), range.from);
        cuts->push_back(range.to);
    }
    for (std::size_t i = 0; i + 1 < cuts->size(); ++i) {
        auto part = headless::partOf(*this, (*cuts)[i], (*cuts)[i + 1]);
        if (part == nullptr) return Acad::eNotImplementedYet;
        curves.append(part.release());
    }
    return Acad::eOk;
}
