// The parts of CZelDwg that only calculate.
#include "OrnCore/zel_dwg.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include <dbmain.h>
#include <dbpl.h>
#include <gemat3d.h>

#include "OrnCore/area_sum.h"
#include "OrnCore/outline.h"
#include "OrnCore/point_in_outline.h"
#include "OrnCore/polyline_segments.h"
#include "OrnCore/segment_intersection.h"
#include "OrnCore/zel_math.h"

namespace {

/// A polyline's plane is the world's, possibly higher or lower, when its normal is the z axis;
/// otherwise the point is taken into the polyline's own coordinates.
AcGePoint2d inPlaneOf(const AcDbPolyline& polyline, const AcGePoint3d& point) {
    const AcGeVector3d normal = polyline.normal();
    if (normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0) return {point.x, point.y};
    AcGeMatrix3d toWorld;
    polyline.getEcs(toWorld);
    const AcGePoint3d own = toWorld.inverse() * point;
    return {own.x, own.y};
}

} // namespace

bool CZelDwg::EqualPoint(const AcGePoint3d& a, const AcGePoint3d& b, int decimals) {
    // Doubles have no more decimals than this at any size a drawing has.
    constexpr int kMost = 15;
    const double scale = std::pow(10.0, std::clamp(decimals, -kMost, kMost));
    const auto same = [scale](double x, double y) {
        return std::round(x * scale) == std::round(y * scale);
    };
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}

double CZelDwg::GetAngle(const AcGePoint3d& start, const AcGePoint3d& end, int inRadians) {
    const double angle = std::atan2(end.y - start.y, end.x - start.x);
    constexpr double kTurn = 2.0 * std::numbers::pi;
    const double turned = angle < 0.0 ? angle + kTurn : angle + 0.0; // -0 becomes 0
    const double positive = turned == kTurn ? 0.0 : turned;          // just below 0 rounds up
    return inRadians != 0 ? positive : positive * (360.0 / kTurn);
}

int CZelDwg::GetLineInterSect(const AcGePoint3d& start1, const AcGePoint3d& end1,
                              const AcGePoint3d& start2, const AcGePoint3d& end2,
                              AcGePoint3d& out) {
    const orncore::Segment first{{start1.x, start1.y}, {end1.x, end1.y}};
    const orncore::Segment second{{start2.x, start2.y}, {end2.x, end2.y}};
    const auto meetings = orncore::intersect(first, second, CZelMath::kTolerance);
    if (!meetings.empty()) out = {meetings.front().x, meetings.front().y, start1.z};
    return static_cast<int>(meetings.size());
}

double CZelDwg::GetLength(const AcGePoint3d& a, const AcGePoint3d& b) { return a.distanceTo(b); }

AcGePoint3d CZelDwg::GetLineMidPoint(const AcGePoint3d& a, const AcGePoint3d& b) {
    return a + (b - a) * 0.5;
}

AcGePoint3d CZelDwg::GetUprightPoint(const AcGePoint3d& point, const AcGePoint3d& lineStart,
                                     const AcGePoint3d& lineEnd) {
    const AcGeVector3d along = lineEnd - lineStart;
    const double square = along.dotProduct(along);
    if (square == 0.0) return lineStart;
    return lineStart + along * (along.dotProduct(point - lineStart) / square);
}

AcGePoint3d CZelDwg::MovePtTo(AcGePoint3d& point, double distance, double angle) {
    point.x += distance * std::cos(angle);
    point.y += distance * std::sin(angle);
    return point;
}

AcGePoint3d CZelDwg::RotatePoint(const AcGePoint3d& point, const AcGePoint3d& about, double angle) {
    const double dx = point.x - about.x;
    const double dy = point.y - about.y;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return {about.x + dx * cosine - dy * sine, about.y + dx * sine + dy * cosine, point.z};
}

int CZelDwg::GetInterSect(const AcDbExtents& a, const AcDbExtents& b, double tol) {
    const auto meet = [tol](double lowA, double highA, double lowB, double highB) {
        return lowA <= highA && lowB <= highB && lowA <= highB + tol && lowB <= highA + tol;
    };
    const bool inX = meet(a.minPoint().x, a.maxPoint().x, b.minPoint().x, b.maxPoint().x);
    const bool inY = meet(a.minPoint().y, a.maxPoint().y, b.minPoint().y, b.maxPoint().y);
    return inX && inY ? 1 : 0;
}

int CZelDwg::PtInClosePolygon(const AcGePoint3dArray& points, const AcGePoint3d& point,
                              double tol) {
    const std::span<const AcGePoint3d> outline(points.asArrayPtr(),
                                               static_cast<std::size_t>(points.length()));
    return static_cast<int>(orncore::placeOf({point.x, point.y}, outline, tol));
}

int CZelDwg::PtInClosePolygon(const AcGePoint3dArray* points, const AcGePoint3d& point,
                              double tol) {
    return points == nullptr ? -1 : PtInClosePolygon(*points, point, tol);
}

int CZelDwg::PtInClosePolygon(const AcDbPolyline* polyline, const AcGePoint3d& point, double tol) {
    if (polyline == nullptr) return -1;
    return static_cast<int>(
        orncore::placeOf(inPlaneOf(*polyline, point), orncore::readOutline(*polyline), tol));
}

double CZelDwg::GetPolylineArea(const AcDbPolyline* polyline) {
    if (polyline == nullptr) return 0.0;
    orncore::AreaSum sum;
    orncore::forEachSegment(*polyline, orncore::Closing::kByStraightLine,
                            [&sum](const orncore::Segment& segment) { sum.add(segment); });
    return std::abs(sum.value());
}
