// The arc of a given radius that touches two lines or arcs.
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "ge/circ_arc.h"
#include "ge/circle_cuts.h"
#include "ge/lines.h"

using headless::Circle2d;
using headless::CutPoints;

namespace {

/// A line or a circle on which the centre of a touching circle can lie.
struct Track {
    bool isLine = false;
    AcGePoint2d point; ///< A point of the line.
    AcGeVector2d along;
    Circle2d circle;
};

/// The two tracks beside a curve; none for curves other than lines and circular arcs.
std::vector<Track> tracksBeside(const AcGeCurve2d& curve, double radius) {
    if (const auto* line = dynamic_cast<const AcGeLinearEnt2d*>(&curve)) {
        const AcGeVector2d along = line->direction();
        const AcGeVector2d aside = along.perpVector() * radius;
        return {{true, line->pointOnLine() + aside, along, {}},
                {true, line->pointOnLine() - aside, along, {}}};
    }
    if (const auto* arc = dynamic_cast<const AcGeCircArc2d*>(&curve)) {
        return {{false, {}, {}, {arc->center(), arc->radius() + radius}},
                {false, {}, {}, {arc->center(), std::abs(arc->radius() - radius)}}};
    }
    return {};
}

CutPoints crossings(const Track& a, const Track& b) {
    const double tolerance = AcGeContext::gTol.equalPoint();
    if (a.isLine && b.isLine) return headless::cutLine(a.point, a.along, b.point, b.along);
    if (a.isLine) return headless::cutCircle(b.circle, a.point, a.along, tolerance);
    if (b.isLine) return headless::cutCircle(a.circle, b.point, b.along, tolerance);
    return headless::cutCircle(a.circle, b.circle, tolerance);
}

/// Where a circle about `center` touches the curve; nothing when it does not touch there.
std::optional<AcGePoint2d> touchOf(const AcGeCurve2d& curve, const AcGePoint2d& center,
                                   double radius) {
    const AcGePoint2d nearest = curve.closestPointTo(center);
    // The nearest point of an arc's far side is not where a circle around it touches from within.
    const auto* arc = dynamic_cast<const AcGeCircArc2d*>(&curve);
    const AcGePoint2d candidates[] = {
        nearest, arc == nullptr || center.isEqualTo(arc->center())
                     ? nearest
                     : arc->center() - (center - arc->center()).normal() * arc->radius()};
    const double slack = 1e-9 * (1.0 + radius);
    for (const AcGePoint2d& point : candidates) {
        AcGeTol tolerance;
        tolerance.setEqualPoint(slack);
        if (std::abs(point.distanceTo(center) - radius) <= slack && curve.isOn(point, tolerance))
            return point;
    }
    return std::nullopt;
}

struct Fillet {
    AcGePoint2d center;
    AcGePoint2d first;
    AcGePoint2d second;
};

/// The touching circle whose touching points are nearest to the two given ones.
std::optional<Fillet> nearestFillet(const AcGeCurve2d& curve1, const AcGeCurve2d& curve2,
                                    double radius, const AcGePoint2d& near1,
                                    const AcGePoint2d& near2) {
    std::optional<Fillet> best;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const Track& a : tracksBeside(curve1, radius)) {
        for (const Track& b : tracksBeside(curve2, radius)) {
            const CutPoints centers = crossings(a, b);
            for (int i = 0; i < centers.count; ++i) {
                const auto first = touchOf(curve1, centers.points[i], radius);
                const auto second = touchOf(curve2, centers.points[i], radius);
                if (!first || !second) continue;
                const double distance = first->distanceTo(near1) + second->distanceTo(near2);
                if (distance >= bestDistance) continue;
                bestDistance = distance;
                best = Fillet{centers.points[i], *first, *second};
            }
        }
    }
    return best;
}

} // namespace

AcGeCircArc2d& AcGeCircArc2d::set(const AcGeCurve2d& curve1, const AcGeCurve2d& curve2,
                                  double radius, double& param1, double& param2,
                                  Adesk::Boolean& success) {
    const auto fillet =
        nearestFillet(curve1, curve2, radius, curve1.evalPoint(param1), curve2.evalPoint(param2));
    success = fillet.has_value();
    if (!fillet) return *this;
    param1 = curve1.paramOf(fillet->first);
    param2 = curve2.paramOf(fillet->second);
    const AcGeVector2d out1 = fillet->first - fillet->center;
    const AcGeVector2d out2 = fillet->second - fillet->center;
    const bool clockwise = out1.perpVector().dotProduct(out2) < 0.0;
    return set(fillet->center, radius, 0.0, out1.angleTo(out2), out1, clockwise);
}
