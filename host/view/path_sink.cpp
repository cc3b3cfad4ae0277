#include "view/path_sink.h"

#include <algorithm>
#include <cmath>

#include "db/curve_piece.h"

namespace headless {
namespace {

/// Two ends are one corner when that close, in pixels.
constexpr double kJoint = 1e-3;

/// How many cubic curves stand in for a piece: 16 to a full circle are right to 1e-6 of its radius.
int cubicsOf(const CurvePiece& piece, double pixels) {
    constexpr double kPixelsPerCubic = 8.0;
    const int most = piece.kind() == CurvePiece::Kind::spline ? 256 : 16;
    return std::clamp(static_cast<int>(pixels / kPixelsPerCubic), 4, most);
}

} // namespace

void PathSink::goTo(const AcGePoint3d& start) {
    if (first_ && map_(start).distanceTo(map_(last_)) <= kJoint) return;
    first_ = start;
    canvas_.moveTo(map_(start));
}

void PathSink::onSegment(const AcGePoint3d& start, const AcGePoint3d& end) {
    goTo(start);
    last_ = end;
    if (map_(end).distanceTo(map_(*first_)) <= kJoint && start != *first_) {
        canvas_.closePath();
        first_.reset();
    } else {
        canvas_.lineTo(map_(end));
    }
}

void PathSink::onCurve(const CurvePiece& piece) {
    const double length = piece.extents().isValid() ? piece.length() * map_.scale() : 0.0;
    if (!std::isfinite(length)) return;
    const int count = cubicsOf(piece, length);
    const double step = (piece.endParam() - piece.startParam()) / count;
    goTo(piece.start());
    AcGePoint3d from = piece.start();
    AcGeVector3d leaving = piece.firstDerivative(piece.startParam());
    for (int i = 1; i <= count; ++i) {
        const double param = i == count ? piece.endParam() : piece.startParam() + i * step;
        const AcGePoint3d to = piece.pointAt(param);
        const AcGeVector3d arriving = piece.firstDerivative(param);
        canvas_.bezierTo(map_(from + leaving * (step / 3.0)), map_(to - arriving * (step / 3.0)),
                         map_(to));
        from = to;
        leaving = arriving;
    }
    last_ = from;
}

void PathSink::onEndless(const AcGePoint3d& base, const AcGeVector3d& along) {
    const PictureWindow& window = map_.window();
    const AcGePoint3d middle((window.left + window.right) / 2.0, (window.bottom + window.top) / 2.0,
                             base.z);
    const double reach = base.distanceTo(middle) +
                         std::hypot(window.right - window.left, window.top - window.bottom);
    const AcGeVector3d direction = along.normal();
    onSegment(base, base + direction * reach);
}

} // namespace headless
