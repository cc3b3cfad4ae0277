#include "blocks/clip_crossings.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <dbspline.h>

#include "blocks/curve_stretch.h"
#include "blocks/spline_zeros.h"

namespace blocks {
namespace {

/// A plane in clip space that the shown part ends at: an edge seen from above, or a height.
struct Wall {
    AcGeVector3d normal; // of length 1
    double distance;     // along it

    double height(const AcGePoint3d& point) const {
        return normal.dotProduct(point.asVector()) - distance;
    }
};

std::vector<Wall> wallsOf(const ClipBoundary& clip) {
    std::vector<Wall> walls;
    for (std::size_t i = 0; clip.boundsPlane() && i < clip.corners.size(); ++i) {
        const AcGePoint3d& corner = clip.corners[i];
        const AcGeVector3d edge = clip.corners[(i + 1) % clip.corners.size()] - corner;
        const AcGeVector3d normal(-edge.y, edge.x, 0.0);
        if (normal.length() == 0.0) continue;
        const AcGeVector3d unit = normal / normal.length();
        walls.push_back({unit, unit.dotProduct(corner.asVector())});
    }
    for (const double depth : {clip.front, clip.back})
        if (std::isfinite(depth)) walls.push_back({AcGeVector3d::kZAxis, depth});
    return walls;
}

void addCrossings(const CurveStretch& stretch, const Wall& wall, std::vector<double>& params) {
    const auto add = [&](double param) {
        if (param > stretch.from && param < stretch.to) params.push_back(param);
    };
    if (!stretch.isRound()) {
        const double slope = wall.normal.dotProduct(stretch.along);
        const double anchor = std::isfinite(stretch.from) ? stretch.from : 0.0;
        if (slope != 0.0) add(anchor - wall.height(stretch.origin) / slope);
        return;
    }
    // height + c cos(a) + s sin(a) = 0
    const double c = wall.normal.dotProduct(stretch.cosine);
    const double s = wall.normal.dotProduct(stretch.sine);
    const double share = -wall.height(stretch.origin) / std::hypot(c, s);
    if (!(std::abs(share) <= 1.0)) return;
    constexpr double kTurn = 2.0 * std::numbers::pi;
    for (const double turn : {std::acos(share), -std::acos(share)}) {
        const double angle = std::fmod(std::atan2(s, c) + turn + 2.0 * kTurn, kTurn);
        add(stretch.from + angle / stretch.rate);
    }
}

void addSplineCrossings(const AcDbSpline& spline, const Wall& wall, const AcGeMatrix3d& toClip,
                        std::vector<double>& params) {
    NumberSpline heights;
    AcGePoint3dArray points;
    AcGeDoubleArray knots;
    AcGeDoubleArray weights;
    Adesk::Boolean rational = false;
    Adesk::Boolean closed = false;
    Adesk::Boolean periodic = false;
    double ignored = 0.0;
    if (spline.getNurbsData(heights.degree, rational, closed, periodic, points, knots, weights,
                            ignored, ignored) != Acad::eOk)
        return;
    heights.knots.assign(knots.asArrayPtr(), knots.asArrayPtr() + knots.length());
    double size = 0.0;
    for (int i = 0; i < points.length(); ++i) {
        const AcGePoint3d point = toClip * points[i];
        const double weight = weights.isEmpty() ? 1.0 : weights[i];
        heights.coefficients.push_back(weight * wall.height(point));
        size = std::max(size, weight * (point.asVector().length() + std::abs(wall.distance)));
    }
    const std::vector<double> zeros = zerosOf(heights, 1e-14 * size);
    params.insert(params.end(), zeros.begin(), zeros.end());
}

} // namespace

std::vector<double> crossings(const AcDbCurve& curve, const ClipBoundary& clip) {
    std::vector<double> params;
    const std::vector<Wall> walls = wallsOf(clip);
    if (const auto* const spline = AcDbSpline::cast(&curve)) {
        for (const Wall& wall : walls)
            addSplineCrossings(*spline, wall, clip.toClipSpace, params);
    } else {
        for (const CurveStretch& stretch : stretchesOf(curve)) {
            // A boundary may also be met at a vertex, between two stretches.
            params.push_back(stretch.from);
            for (const Wall& wall : walls)
                addCrossings(stretch.under(clip.toClipSpace), wall, params);
        }
        params.erase(params.begin());
    }
    std::ranges::sort(params);
    return params;
}

} // namespace blocks
