// LineTools: which way round, inside and outside.
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include <dbpl.h>

#include "OrnCore/outline.h"
#include "OrnCore/zel_dwg.h"
#include "geometry/flat_points.h"
#include "geometry/line_tools.h"

namespace {

using geometry::flattened;

/// Drops the fraction; what 32 bits cannot hold becomes their limit, a NaN 0.
std::int32_t truncated(double value) {
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(value)) return 0;
    if (value <= kLeast) return kLeast;
    return value >= kMost ? kMost : static_cast<std::int32_t>(value);
}

/// Twice the triangle's area over whole units, positive when it runs counter-clockwise.
std::int64_t truncatedTurn(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const std::int64_t dxb = truncated(b.x - a.x);
    const std::int64_t dyb = truncated(b.y - a.y);
    const std::int64_t dxc = truncated(c.x - a.x);
    const std::int64_t dyc = truncated(c.y - a.y);
    return dyc * dxb - dyb * dxc;
}

} // namespace

int LineTools::AngleVertical(double a1, double a2, double tol) {
    constexpr double kQuarter = std::numbers::pi / 2.0;
    const double difference = std::abs(a1 - a2);
    const auto isNear = [&](double angle) {
        return angle - tol < difference && difference < angle + tol;
    };
    return isNear(kQuarter) || isNear(3.0 * kQuarter) ? 1 : 0;
}

bool LineTools::FindPoint(const AcGePoint3d& pt, const AcGePoint3dArray& pts, double tol) {
    for (int i = 0; i < pts.length(); ++i) {
        if (CZelDwg::GetLength(flattened(pt), flattened(pts[i])) < tol) return true;
    }
    return false;
}

// True for counter-clockwise order: callers rely on this sense, opposite to the name.
bool LineTools::IsClockWise(const AcGePoint3dArray& pts) {
    const int n = pts.length();
    std::uint64_t sum = 0; // Unsigned, as it may wrap for coordinates at the limits of 32 bits.
    for (int i = 0; i < n; ++i)
        sum +=
            static_cast<std::uint64_t>(truncatedTurn(pts[i], pts[(i + 1) % n], pts[(i + 2) % n]));
    return static_cast<std::int64_t>(sum) > 0;
}

void LineTools::GetClockWisePtary(AcGePoint3dArray& pts) {
    if (pts.length() < 3) return;
    constexpr double kReach = 1.0;
    const ZelArcLine firstSide(pts[0], pts[1]);
    const AcGePoint3d inner = CZelDwg::GetLineMidPoint(pts[0], pts[2]);
    if (firstSide.PtInLine(inner, kReach) != ZelArcLine::kRight) pts.reverse();
}

double LineTools::GetBulgeFromTwoPointAndCenter(const AcGePoint3d& p1, const AcGePoint3d& p2,
                                                const AcGePoint3d& center) {
    const AcGePoint3d start = flattened(p1);
    const AcGePoint3d end = flattened(p2);
    const AcGePoint3d middle = flattened(center);
    const double half = CZelDwg::GetLength(start, end) / 2.0;
    if (half == 0.0) return 0.0;
    const AcGePoint3d foot = CZelDwg::GetUprightPoint(middle, start, end);
    const double radius = CZelDwg::GetLength(start, middle);
    // With the centre on the chord every direction is as good.
    AcGePoint3d arcMiddle = middle;
    CZelDwg::MovePtTo(arcMiddle, radius, std::atan2(foot.y - middle.y, foot.x - middle.x));
    return CZelDwg::GetLength(arcMiddle, foot) / half;
}

int LineTools::polyWindingNumber(AcDbPolyline* pl, int& winding) {
    if (pl == nullptr || pl->numVerts() == 0) return 0;
    if (!pl->isClosed()) {
        AcGePoint3d first;
        AcGePoint3d last;
        pl->getPointAt(0, first);
        pl->getPointAt(pl->numVerts() - 1, last);
        if (!CZelDwg::EqualPoint(first, last, 3)) return 0;
    }
    // The directions are walked through in a circle, so that they turn by whole circles only.
    const auto turns = orncore::turningNumber(orncore::readOutline(*pl), pl->isClosed());
    if (!turns) return 0;
    winding = *turns;
    return 1;
}

AcGePoint3d LineTools::GetPtInPolyLine(AcDbPolyline* pl) {
    AcGePoint3dArray pts;
    CArray<double, double> bulges;
    GetPtsAndBulges(pl, pts, bulges);
    const auto isInside = [pl](const AcGePoint3d& candidate) {
        constexpr double kTolerance = 1e-6;
        return CZelDwg::PtInClosePolygon(pl, candidate, kTolerance) == 1;
    };
    if (pts.length() == 3) {
        // The middles of a triangle's sides lie on it; this one is within.
        const AcGePoint3d candidate =
            CZelDwg::GetLineMidPoint(CZelDwg::GetLineMidPoint(pts[0], pts[1]), pts[2]);
        return isInside(candidate) ? candidate : AcGePoint3d::kOrigin;
    }
    for (int i = 0; i + 2 < pts.length(); ++i) {
        const AcGePoint3d candidate = CZelDwg::GetLineMidPoint(pts[i], pts[i + 2]);
        if (isInside(candidate)) return candidate;
    }
    return AcGePoint3d::kOrigin;
}
