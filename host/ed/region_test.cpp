#include "ed/region_test.h"

#include <algorithm>
#include <cmath>

#include "db/piece_cuts.h"

namespace headless {

namespace {

AcGePoint2d flat(const AcGePoint3d& point) { return {point.x, point.y}; }
AcGePoint3d spatial(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }

double distanceToEdge(const AcGePoint2d& point, const AcGePoint2d& a, const AcGePoint2d& b) {
    const AcGeVector2d along = b - a;
    const double size = along.lengthSqrd();
    const double t = size == 0.0 ? 0.0 : std::clamp((point - a).dotProduct(along) / size, 0.0, 1.0);
    return point.distanceTo(a + along * t);
}

AcGeMatrix3d flattening() {
    AcGeMatrix3d matrix;
    matrix.entry[2][2] = 0.0;
    matrix.entry[2][3] = 0.0;
    return matrix;
}

bool apart(const Extents3d& box, const Extents2d& other, double gap) {
    return box.min.x > other.max.x + gap || box.max.x < other.min.x - gap ||
           box.min.y > other.max.y + gap || box.max.y < other.min.y - gap;
}

bool within(const Extents3d& box, const Extents2d& other) {
    return box.min.x >= other.min.x && box.max.x <= other.max.x && box.min.y >= other.min.y &&
           box.max.y <= other.max.y;
}

} // namespace

Outline2d::Outline2d(std::vector<AcGePoint2d> points, Kind kind)
    : points_(std::move(points)), kind_(kind) {
    for (const AcGePoint2d& point : points_)
        box_.add(point);
}

double Outline2d::tolerance() const {
    const double size = std::max(
        {std::abs(box_.min.x), std::abs(box_.max.x), std::abs(box_.min.y), std::abs(box_.max.y)});
    return AcGeContext::gTol.equalPoint() + 1e-12 * size;
}

bool Outline2d::contains(const AcGePoint2d& point) const {
    const double gap = tolerance();
    if (!(point.x >= box_.min.x - gap && point.x <= box_.max.x + gap &&
          point.y >= box_.min.y - gap && point.y <= box_.max.y + gap))
        return false;
    bool inside = false;
    for (std::size_t i = 0; i < edges(); ++i) {
        const AcGePoint2d& a = points_[i];
        const AcGePoint2d& b = points_[(i + 1) % points_.size()];
        if (distanceToEdge(point, a, b) <= gap) return true;
        const bool spans = (a.y > point.y) != (b.y > point.y);
        if (spans && point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
    }
    return isClosed() && inside;
}

void Outline2d::addCuts(const CurvePiece& piece, std::vector<double>& params) const {
    for (std::size_t i = 0; i < edges(); ++i) {
        const CurvePiece edge = CurvePiece::segment(
            spatial(points_[i]), spatial(points_[(i + 1) % points_.size()]), 0.0, 1.0);
        for (const AcGePoint3d& place : cutPieces(piece, {}, edge, {}, tolerance()))
            params.push_back(piece.nearestParam(place));
    }
}

Standing standingOf(const CurvePiece& piece, const Outline2d& region,
                    std::span<const VisibleRegion> clips) {
    const Extents3d box = piece.extents();
    if (!box.isValid()) return {};
    if (clips.empty()) {
        if (apart(box, region.box(), AcGeContext::gTol.equalPoint())) return {false, true};
        // A rectangle along the axes is its own box.
        const bool rectangle = region.isClosed() && region.points().size() == 4 &&
                               within(box, region.box()) && region.contains(region.box().min) &&
                               region.contains({region.box().min.x, region.box().max.y});
        if (rectangle) return {true, false};
    }
    const CurvePiece shadow = piece.transformed(flattening());
    std::vector<double> params{shadow.startParam(), shadow.endParam()};
    region.addCuts(shadow, params);
    for (const VisibleRegion& clip : clips)
        clip.boundary.addCuts(shadow, params);
    std::sort(params.begin(), params.end());

    Standing standing;
    const auto look = [&](double param) {
        const AcGePoint2d point = flat(shadow.pointAt(param));
        const bool seen = std::all_of(clips.begin(), clips.end(),
                                      [&](const VisibleRegion& clip) { return clip.shows(point); });
        if (!seen) return;
        (region.contains(point) ? standing.touches : standing.leaves) = true;
    };
    // Where the piece is in and out changes only at the cuts, which may be touches.
    for (std::size_t i = 0; i < params.size(); ++i) {
        look(params[i]);
        if (i + 1 < params.size()) look((params[i] + params[i + 1]) / 2.0);
    }
    return standing;
}

} // namespace headless
