#include "db/spline.h"

#include <algorithm>
#include <cmath>

#include "db/curve_piece.h"
#include "db/dxf_output.h"
#include "db/named_fields.h"
#include "ge/spline.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, "SPLINE")

using headless::Spline;
namespace field = headless::field;

namespace {

std::vector<AcGePoint3d> toVector(const AcGePoint3dArray& points) {
    return {points.begin(), points.end()};
}

std::vector<double> toVector(const AcGeDoubleArray& values) {
    return {values.begin(), values.end()};
}

std::optional<AcGeVector3d> asTangent(const AcGeVector3d& vector) {
    return vector.isZeroLength() ? std::nullopt : std::optional(vector);
}

} // namespace

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, int /*order*/, double fitTolerance)
    : fitPoints_(toVector(fitPoints)), fitTolerance_(fitTolerance) {
    fit();
}

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
                       const AcGeVector3d& endTangent, int /*order*/, double fitTolerance)
    : fitPoints_(toVector(fitPoints)), startTangent_(asTangent(startTangent)),
      endTangent_(asTangent(endTangent)), fitTolerance_(fitTolerance) {
    fit();
}

AcDbSpline::AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                       Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                       const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                       double controlPtTol, double knotTol) {
    setNurbsData(degree, rational, closed, periodic, controlPoints, knots, weights, controlPtTol,
                 knotTol);
}

void AcDbSpline::fit() {
    std::vector<AcGePoint3d> points = fitPoints_;
    if (closed_ && !points.empty() && !points.front().isEqualTo(points.back()))
        points.push_back(points.front());
    auto curve = headless::splineThrough(points, startTangent_, endTangent_);
    curve_ = curve ? std::make_shared<const Spline>(std::move(*curve)) : nullptr;
}

Adesk::Boolean AcDbSpline::isRational() const { return !isNull() && !curve_->weights.empty(); }

int AcDbSpline::degree() const { return isNull() ? 0 : curve_->degree; }

int AcDbSpline::numControlPoints() const {
    return isNull() ? 0 : static_cast<int>(curve_->points.size());
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    point = curve_->points[static_cast<std::size_t>(index)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    assertWriteEnabled();
    Spline curve = *curve_;
    curve.points[static_cast<std::size_t>(index)] = point;
    curve_ = std::make_shared<const Spline>(std::move(curve));
    fitPoints_.clear();
    return Acad::eOk;
}

double AcDbSpline::weightAt(int index) const {
    const bool has = isRational() && index >= 0 && index < numControlPoints();
    return has ? curve_->weights[static_cast<std::size_t>(index)] : -1.0;
}

Acad::ErrorStatus AcDbSpline::getNurbsData(int& degree, Adesk::Boolean& rational,
                                           Adesk::Boolean& closed, Adesk::Boolean& periodic,
                                           AcGePoint3dArray& controlPoints, AcGeDoubleArray& knots,
                                           AcGeDoubleArray& weights, double& controlPtTol,
                                           double& knotTol) const {
    if (isNull()) return Acad::eDegenerateGeometry;
    degree = curve_->degree;
    rational = isRational();
    closed = isClosed();
    periodic = periodic_;
    controlPoints.removeAll();
    knots.removeAll();
    weights.removeAll();
    for (const AcGePoint3d& point : curve_->points)
        controlPoints.append(point);
    for (const double knot : curve_->knots)
        knots.append(knot);
    for (const double weight : curve_->weights)
        weights.append(weight);
    controlPtTol = controlPointTolerance_;
    knotTol = knotTolerance_;
    return Acad::eOk;
}

std::unique_ptr<AcDbSpline> AcDbSpline::partBetween(double from, double to) const {
    if (isNull()) return nullptr;
    auto part = bareSpline();
    part->curve_ = std::make_shared<const Spline>(splinePart(*curve_, from, to));
    return part;
}

std::unique_ptr<AcDbSpline> AcDbSpline::bareSpline() const {
    if (curve_ == nullptr) return nullptr;
    auto bare = std::make_unique<AcDbSpline>();
    bare->curve_ = curve_;
    bare->controlPointTolerance_ = controlPointTolerance_;
    bare->knotTolerance_ = knotTolerance_;
    bare->copyProperties(*this);
    return bare;
}

Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, Adesk::Boolean rational,
                                           Adesk::Boolean closed, Adesk::Boolean periodic,
                                           const AcGePoint3dArray& controlPoints,
                                           const AcGeDoubleArray& knots,
                                           const AcGeDoubleArray& weights, double controlPtTol,
                                           double knotTol) {
    assertWriteEnabled();
    Spline curve;
    curve.degree = degree;
    curve.points = toVector(controlPoints);
    curve.knots = toVector(knots);
    if (rational) curve.weights = toVector(weights);
    if (!curve.isValid()) return Acad::eInvalidInput;
    curve_ = std::make_shared<const Spline>(std::move(curve));
    fitPoints_.clear();
    closed_ = closed;
    periodic_ = periodic;
    controlPointTolerance_ = controlPtTol;
    knotTolerance_ = knotTol;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
    point = fitPoints_[static_cast<std::size_t>(index)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitTangents(AcGeVector3d& startTangent,
                                             AcGeVector3d& endTangent) const {
    if (!look(startTangent_) || !endTangent_) return Acad::eNotApplicable;
    startTangent = *startTangent_;
    endTangent = *endTangent_;
    return Acad::eOk;
}

bool AcDbSpline::isClosed() const {
    if (isNull()) return false;
    return curve_->pointAt(curve_->startParam()).isEqualTo(curve_->pointAt(curve_->endParam()));
}

Acad::ErrorStatus AcDbSpline::reverseCurve() {
    assertWriteEnabled();
    if (curve_ == nullptr) return Acad::eDegenerateGeometry;
    Spline curve = *curve_;
    curve.reverse();
    curve_ = std::make_shared<const Spline>(std::move(curve));
    std::reverse(fitPoints_.begin(), fitPoints_.end());
    std::swap(startTangent_, endTangent_);
    for (auto* tangent : {&startTangent_, &endTangent_})
        if (*tangent) tangent->value().negate();
    return Acad::eOk;
}

bool AcDbSpline::normalOf(AcGeVector3d& normal) const {
    if (curve_ == nullptr) return false;
    // The plane of three control points well apart, then all others are in it or not.
    const AcGePoint3d& origin = curve_->points.front();
    AcGeVector3d widest;
    AcGeVector3d along;
    for (const AcGePoint3d& point : curve_->points)
        if ((point - origin).lengthSqrd() > along.lengthSqrd()) along = point - origin;
    for (const AcGePoint3d& point : curve_->points) {
        const AcGeVector3d across = along.crossProduct(point - origin);
        if (across.lengthSqrd() > widest.lengthSqrd()) widest = across;
    }
    if (widest.isZeroLength()) return false;
    normal = widest.normal();
    if (normal.z < 0.0) normal.negate(); // Either would do; files have that one.
    const double allowed = 1e-9 * along.length();
    return std::all_of(curve_->points.begin(), curve_->points.end(), [&](const AcGePoint3d& p) {
        return std::abs((p - origin).dotProduct(normal)) <= allowed;
    });
}

bool AcDbSpline::isPlanar() const {
    assertReadEnabled();
    AcGeVector3d normal;
    return normalOf(normal);
}

Acad::ErrorStatus AcDbSpline::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    assertReadEnabled();
    AcGeVector3d normal;
    const bool planar = normalOf(normal);
    kind = planar ? AcDb::kPlanar : AcDb::kNonPlanar;
    if (!planar) return Acad::eNotApplicable;
    plane = AcGePlane(curve_->points.front(), normal);
    return Acad::eOk;
}

bool AcDbSpline::forEachPiece(const headless::PieceVisitor& visit) const {
    return curve_ == nullptr || visit(headless::CurvePiece::spline(curve_));
}

Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& transform) {
    if (curve_ != nullptr) {
        Spline curve = *curve_;
        curve.transformBy(transform);
        curve_ = std::make_shared<const Spline>(std::move(curve));
    }
    for (AcGePoint3d& point : fitPoints_)
        point.transformBy(transform);
    for (auto* tangent : {&startTangent_, &endTangent_})
        if (*tangent) tangent->value().transformBy(transform);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subGetGripPoints(AcGePoint3dArray& points) const {
    if (fitPoints_.empty() && curve_ != nullptr)
        for (const AcGePoint3d& point : curve_->points)
            points.append(point);
    for (const AcGePoint3d& point : fitPoints_)
        points.append(point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    Spline curve;
    AcGeVector3d startTangent;
    AcGeVector3d endTangent;
    const auto tags = filer->subclass("AcDbSpline");
    const auto numbers = [&](const headless::DxfTag& tag) {
        if (tag.code == 40) curve.knots.push_back(tag.real());
        if (tag.code == 41) curve.weights.push_back(tag.real());
        return tag.code == 40 || tag.code == 41;
    };
    field::read(*filer, tags, numbers, field::Points{10, curve.points},
                field::Points{11, fitPoints_}, field::Point{12, startTangent},
                field::Point{13, endTangent}, field::Real{42, knotTolerance_},
                field::Real{43, controlPointTolerance_}, field::Real{44, fitTolerance_},
                field::Bit{70, 1, closed_}, field::Bit{70, 2, periodic_},
                field::Integer{71, curve.degree});
    startTangent_ = asTangent(startTangent);
    endTangent_ = asTangent(endTangent);
    onlyFitPointsStated_ = curve.points.empty() && !fitPoints_.empty();
    if (curve.isValid())
        curve_ = std::make_shared<const Spline>(std::move(curve));
    else
        fit();
    if (curve_ == nullptr && !tags.empty())
        filer->report(tags.front(), "a spline without a curve: its points and knots do not fit");
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 13,  23,  33, 40,
                                              41, 42, 43, 44, 70, 71, 72, 73, 74, 210, 220, 230};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbSpline", kCodes);
    static const Spline kNone;
    // Next to its fit points the curve that we made of them would count as the file's own.
    const bool fitted = onlyFitPointsStated_ && !fitPoints_.empty();
    const Spline& curve = curve_ == nullptr || fitted ? kNone : *curve_;
    writeHead(out, curve);
    for (const double knot : curve.knots)
        out.real(40, knot);
    for (const double weight : curve.weights)
        out.real(41, weight);
    for (const AcGePoint3d& point : curve.points)
        out.point(10, point);
    for (const AcGePoint3d& point : fitPoints_)
        out.point(11, point);
    return Acad::eOk;
}

void AcDbSpline::writeHead(headless::DxfOutput& out, const Spline& curve) const {
    constexpr std::uint32_t kClosed = 1;
    constexpr std::uint32_t kPeriodic = 2;
    constexpr std::uint32_t kRational = 4;
    constexpr std::uint32_t kPlanar = 8;
    AcGeVector3d normal;
    const bool planar = normalOf(normal);
    if (planar) out.point(210, normal);
    out.flags(70,
              (closed_ ? kClosed : 0) | (periodic_ ? kPeriodic : 0) |
                  (curve.weights.empty() ? 0 : kRational) | (planar ? kPlanar : 0),
              kClosed | kPeriodic | kRational | kPlanar);
    out.integer(71, curve_ == nullptr ? curve.degree : curve_->degree);
    out.integer(72, std::ssize(curve.knots));
    out.integer(73, std::ssize(curve.points));
    out.integer(74, std::ssize(fitPoints_));
    out.real(42, knotTolerance_);
    out.real(43, controlPointTolerance_);
    if (!fitPoints_.empty()) out.real(44, fitTolerance_);
    if (startTangent_) out.point(12, *startTangent_);
    if (endTangent_) out.point(13, *endTangent_);
}
