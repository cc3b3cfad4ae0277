#include "view/path_sink.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "db/curve_piece.h"

namespace headless {
namespace {

/// Two ends are one corner when that close, in pixels.
constexpr double kJoint = 1e-3;

/// The angle that an arc sweeps; 0 for a spline.
double sweepOf(const CurvePiece& piece) {
    if (piece.kind() == CurvePiece::Kind::arc) return piece.endParam() - piece.startParam();
    return piece.kind() == CurvePiece::Kind::bulge ? 4.0 * std::atan(piece.bulge()) : 0.0;
}

/// How many cubic curves stand in for a piece: four to a full circle are right to 3e-4 of its
/// radius, sixteen to 1e-7, 64 to less than a millionth of that.
int cubicsOf(const CurvePiece& piece, double pixels) {
    constexpr double kPixelsPerCubic = 8.0;
    constexpr double kLarge = 600.0;
    constexpr double kHuge = 1e5;
    if (piece.kind() == CurvePiece::Kind::spline)
        return std::clamp(static_cast<int>(std::min(pixels, 1e4) / kPixelsPerCubic), 4, 256);
    const int toCircle = pixels > kHuge ? 64 : pixels > kLarge ? 16 : 4;
    const double turns = std::abs(sweepOf(piece)) / (2.0 * std::numbers::pi);
    return std::clamp(static_cast<int>(std::ceil(toCircle * turns - 1e-9)), 1, 64);
}

/// How far along its tangents a cubic curve bends that stands in for so much of an arc, as a share
/// of the way; a third where the piece is no arc.
double reachOf(double sweep) {
    constexpr double kTiny = 1e-4;
    return std::abs(sweep) < kTiny ? 1.0 / 3.0 : 4.0 / 3.0 * std::tan(sweep / 4.0) / sweep;
}

} // namespace

void PathSink::goTo(const AcGePoint2d& start) {
    if (!first_ || start.distanceTo(last_) > kJoint) {
        first_ = start;
        lines_.moveTo(start);
    } else if (runs_ == Runs::eachPiece) {
        lines_.beginRun();
    }
}

void PathSink::onSegment(const AcGePoint3d& start, const AcGePoint3d& end) {
    const AcGePoint2d from = map_(start);
    const AcGePoint2d to = map_(end);
    goTo(from);
    last_ = to;
    if (to.distanceTo(*first_) <= kJoint && from != *first_) {
        lines_.close();
        first_.reset();
    } else {
        lines_.lineTo(to);
    }
}

void PathSink::onCurve(const CurvePiece& piece) {
    const double length = piece.extents().isValid() ? piece.length() * map_.scale() : 0.0;
    if (!std::isfinite(length)) return;
    const int count = cubicsOf(piece, length);
    const double step = (piece.endParam() - piece.startParam()) / count;
    const double reach = step * reachOf(sweepOf(piece) / count);
    AcGePoint3d from = piece.start();
    goTo(map_(from));
    AcGeVector3d leaving = piece.firstDerivative(piece.startParam());
    for (int i = 1; i <= count; ++i) {
        const double param = i == count ? piece.endParam() : piece.startParam() + i * step;
        const AcGePoint3d to = piece.pointAt(param);
        const AcGeVector3d arriving = piece.firstDerivative(param);
        lines_.bezierTo(map_(from + leaving * reach), map_(to - arriving * reach), map_(to));
        from = to;
        leaving = arriving;
    }
    last_ = map_(from);
}

void PathSink::onArea(const std::vector<AcGePoint3d>& corners) {
    SheetPath::Line& polygon = areas_.emplace_back();
    for (const AcGePoint3d& corner : corners)
        polygon.push_back(map_(corner));
}

void PathSink::onEndless(const AcGePoint3d& base, const AcGeVector3d& along) {
    const PictureWindow& window = map_.window();
    const AcGePoint3d middle((window.left + window.right) / 2.0, (window.bottom + window.top) / 2.0,
                             base.z);
    const double reach = base.distanceTo(middle) +
                         std::hypot(window.right - window.left, window.top - window.bottom);
    const AcGeVector3d direction = along.normal();
    first_.reset();
    onSegment(base, base + direction * reach);
}

} // namespace headless
