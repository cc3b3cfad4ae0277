#include "db/curve.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "db/curve_piece.h"
#include "db/geometry_sink.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity)

namespace {

using headless::CurvePiece;
using headless::PieceVisitor;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// How far a point may lie off a curve to count as on it: the global tolerance, and the rounding of
/// its coordinates where those are large.
double onCurveTolerance(const AcGePoint3d& point) {
    const double size = std::max({std::abs(point.x), std::abs(point.y), std::abs(point.z)});
    return AcGeContext::gTol.equalPoint() + 1e-12 * size;
}

/// A curve's nearest point and where it lies.
struct Nearest {
    AcGePoint3d point;
    double param = 0.0;
    double distance = kInfinity;
};

} // namespace

std::optional<headless::CurvePiece> AcDbCurve::pieceAt(double param) const {
    std::optional<CurvePiece> found;
    forEachPiece([&](const CurvePiece& piece) {
        if (param < piece.startParam() - kOvershoot) return false;
        if (param <= piece.endParam() + kOvershoot) found = piece;
        return !(param < piece.endParam());
    });
    return found;
}

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
    assertReadEnabled();
    Acad::ErrorStatus status = Acad::eDegenerateGeometry;
    forEachPiece([&](const CurvePiece& piece) {
        param = piece.startParam();
        status = Acad::eOk;
        return false;
    });
    return status;
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
    assertReadEnabled();
    Acad::ErrorStatus status = Acad::eDegenerateGeometry;
    forEachPiece([&](const CurvePiece& piece) {
        param = piece.endParam();
        status = Acad::eOk;
        return true;
    });
    return status;
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getStartParam(param);
    return status == Acad::eOk ? getPointAtParam(param, point) : status;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getEndParam(param);
    return status == Acad::eOk ? getPointAtParam(param, point) : status;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    assertReadEnabled();
    const auto piece = pieceAt(param);
    if (!piece) return Acad::eInvalidInput;
    point = piece->pointAt(param);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    const auto piece = pieceAt(param);
    if (!piece) return Acad::eInvalidInput;
    deriv = piece->firstDerivative(param);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getParamAtPoint(point, param);
    return status == Acad::eOk ? getFirstDeriv(param, deriv) : status;
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(double param, AcGeVector3d& deriv) const {
    assertReadEnabled();
    const auto piece = pieceAt(param);
    if (!piece) return Acad::eInvalidInput;
    deriv = piece->secondDerivative(param);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    assertReadEnabled();
    Nearest nearest;
    forEachPiece([&](const CurvePiece& piece) {
        const double at = piece.nearestParam(point);
        const double distance = piece.pointAt(at).distanceTo(point);
        if (distance < nearest.distance) nearest = {point, at, distance};
        return true;
    });
    if (!(nearest.distance <= onCurveTolerance(point))) return Acad::eInvalidInput;
    param = nearest.param;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& point, AcGePoint3d& onCurve,
                                               bool extend) const {
    assertReadEnabled();
    double first = 0.0;
    double last = 0.0;
    const bool goesOn = extend && !isClosed() && getStartParam(first) == Acad::eOk &&
                        getEndParam(last) == Acad::eOk;
    Nearest nearest;
    forEachPiece([&](const CurvePiece& piece) {
        const bool freeStart = goesOn && piece.startParam() == first;
        const bool freeEnd = goesOn && piece.endParam() == last;
        const double at = piece.nearestParam(point, freeStart, freeEnd);
        const AcGePoint3d there = piece.pointAt(at);
        const double distance = there.distanceTo(point);
        if (distance < nearest.distance) nearest = {there, at, distance};
        return true;
    });
    if (nearest.distance == kInfinity) return Acad::eDegenerateGeometry;
    onCurve = nearest.point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& dist) const {
    assertReadEnabled();
    if (!pieceAt(param)) return Acad::eInvalidInput;
    double before = 0.0;
    forEachPiece([&](const CurvePiece& piece) {
        if (param < piece.endParam()) {
            before += piece.lengthTo(std::max(param, piece.startParam()));
            return false;
        }
        before += piece.length();
        return true;
    });
    dist = before;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double dist, double& param) const {
    assertReadEnabled();
    double before = 0.0;
    double total = 0.0;
    double at = 0.0;
    bool found = false;
    forEachPiece([&](const CurvePiece& piece) {
        const double length = piece.length();
        total = before + length;
        if (!found && dist <= total) {
            at = piece.paramAtLength(std::max(dist - before, 0.0));
            found = true;
            return false;
        }
        at = piece.endParam();
        before = total;
        return true;
    });
    // A length summed up elsewhere may exceed ours by its last digits.
    const double slack = 1e-12 * total + AcGeContext::gTol.equalPoint();
    if (dist < -slack || (!found && dist > total + slack)) return Acad::eInvalidInput;
    param = at;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getParamAtPoint(point, param);
    return status == Acad::eOk ? getDistAtParam(param, dist) : status;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getParamAtDist(dist, param);
    return status == Acad::eOk ? getPointAtParam(param, point) : status;
}

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
    assertReadEnabled();
    std::optional<AcGePoint3d> start;
    AcGeVector3d sum;
    // Seen from the start, so the straight line that closes an open curve adds nothing.
    forEachPiece([&](const CurvePiece& piece) {
        if (!start) start = piece.start();
        sum += piece.areaAbout(*start);
        return true;
    });
    if (!start) return Acad::eDegenerateGeometry;
    area = sum.length();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotApplicable; }

void AcDbCurve::subDescribe(headless::GeometrySink& sink) const {
    forEachPiece([&sink](const CurvePiece& piece) {
        sink.curve(piece);
        return true;
    });
}
