#include "db/polyline.h"

#include <algorithm>
#include <cmath>

#include "db/curve_piece.h"
#include "db/dxf_fields.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/wide_chain.h"
#include "ge/bulge.h"
#include "ge/circ_arc.h"
#include "ge/lines.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, "LWPOLYLINE")

using headless::BulgeSegment;
using headless::CurvePiece;

AcDbPolyline::AcDbPolyline(unsigned int vertexCount) { points_.reserve(vertexCount); }

AcDbPolyline::Widths AcDbPolyline::widths(std::size_t index) const {
    return widths_.empty() ? Widths{constantWidth_, constantWidth_} : widths_[index];
}

std::size_t AcDbPolyline::segmentCount() const {
    return closed_ || points_.empty() ? points_.size() : points_.size() - 1;
}

BulgeSegment AcDbPolyline::segment(std::size_t index) const {
    return {points_[index], points_[next(index)], bulge(index)};
}

AcGePoint3d AcDbPolyline::toWorld(const AcGePoint2d& point) const {
    return headless::ocsToWorld({point.x, point.y, elevation_}, normal_);
}

void AcDbPolyline::ensureWidths() {
    if (widths_.empty()) widths_.assign(points_.size(), {constantWidth_, constantWidth_});
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& point,
                                            double bulge, double startWidth, double endWidth,
                                            Adesk::Int32 vertexIdentifier) {
    assertWriteEnabled();
    if (index > points_.size()) return Acad::eInvalidIndex;
    const auto at = static_cast<std::ptrdiff_t>(index);
    const Widths asked{startWidth < 0.0 ? constantWidth_ : startWidth,
                       endWidth < 0.0 ? constantWidth_ : endWidth};
    if (asked.start != constantWidth_ || asked.end != constantWidth_) ensureWidths();
    if (bulge != 0.0 && bulges_.empty()) bulges_.assign(points_.size(), 0.0);
    if (vertexIdentifier != 0 && identifiers_.empty()) identifiers_.assign(points_.size(), 0);

    // A polyline without vertices keeps its empty lists empty: one vertex starts each that counts.
    const bool first = points_.empty();
    if (!bulges_.empty() || (first && bulge != 0.0)) bulges_.insert(bulges_.begin() + at, bulge);
    if (!widths_.empty() ||
        (first && (asked.start != constantWidth_ || asked.end != constantWidth_)))
        widths_.insert(widths_.begin() + at, asked);
    if (!identifiers_.empty() || (first && vertexIdentifier != 0))
        identifiers_.insert(identifiers_.begin() + at, vertexIdentifier);
    points_.insert(points_.begin() + at, point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    assertWriteEnabled();
    if (index >= points_.size()) return Acad::eInvalidIndex;
    const auto at = static_cast<std::ptrdiff_t>(index);
    points_.erase(points_.begin() + at);
    if (!bulges_.empty()) bulges_.erase(bulges_.begin() + at);
    if (!widths_.empty()) widths_.erase(widths_.begin() + at);
    if (!identifiers_.empty()) identifiers_.erase(identifiers_.begin() + at);
    return Acad::eOk;
}

void AcDbPolyline::reset(Adesk::Boolean reuse, unsigned int vertexCount) {
    assertWriteEnabled();
    points_.clear();
    bulges_.clear();
    widths_.clear();
    identifiers_.clear();
    if (!reuse) minimizeMemory();
    points_.resize(vertexCount);
}

void AcDbPolyline::minimizeMemory() {
    assertWriteEnabled();
    points_.shrink_to_fit();
    bulges_.shrink_to_fit();
    widths_.shrink_to_fit();
    identifiers_.shrink_to_fit();
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& worldPoint) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    worldPoint = toWorld(points_[index]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& point) {
    if (index >= points_.size()) return Acad::eInvalidIndex;
    return change(points_[index], point);
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    assertWriteEnabled();
    if (index >= points_.size()) return Acad::eInvalidIndex;
    if (bulges_.empty() && bulge == 0.0) return Acad::eOk;
    if (bulges_.empty()) bulges_.assign(points_.size(), 0.0);
    bulges_[index] = bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth,
                                            double& endWidth) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    startWidth = widths(index).start;
    endWidth = widths(index).end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth,
                                            double endWidth) {
    assertWriteEnabled();
    if (index >= points_.size()) return Acad::eInvalidIndex;
    if (startWidth < 0.0 || endWidth < 0.0) return Acad::eInvalidInput;
    ensureWidths();
    widths_[index] = {startWidth, endWidth};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getVertexIdentifierAt(unsigned int index,
                                                      Adesk::Int32& identifier) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    identifier = identifiers_.empty() ? 0 : identifiers_[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setVertexIdentifierAt(unsigned int index, Adesk::Int32 identifier) {
    assertWriteEnabled();
    if (index >= points_.size()) return Acad::eInvalidIndex;
    identifiers_.resize(points_.size());
    identifiers_[index] = identifier;
    return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
    if (index >= look(points_).size()) return kEmpty;
    if (index >= segmentCount() || points_.size() == 1) return kPoint;
    if (points_[index].isEqualTo(points_[next(index)])) return kCoincident;
    return bulge(index) == 0.0 ? kLine : kArc;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg2d& line) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    if (segType(index) != kLine) return Acad::eInvalidInput;
    line.set(points_[index], points_[next(index)]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg3d& line) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    if (segType(index) != kLine) return Acad::eInvalidInput;
    line.set(toWorld(points_[index]), toWorld(points_[next(index)]));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc2d& arc) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    if (segType(index) != kArc) return Acad::eInvalidInput;
    arc = AcGeCircArc2d(points_[index], points_[next(index)], bulge(index), Adesk::kFalse);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const {
    if (index >= look(points_).size()) return Acad::eInvalidIndex;
    if (segType(index) != kArc) return Acad::eInvalidInput;
    const BulgeSegment flat = segment(index);
    const headless::Arc2d circle = headless::arcFromBulge(flat.start, flat.end, flat.bulge);
    const AcGePoint3d center = toWorld(circle.center);
    // A clockwise arc turns counter-clockwise about the other normal.
    const AcGeVector3d normal = circle.sweep < 0.0 ? -normal_ : normal_;
    arc.set(center, normal, (toWorld(flat.start) - center).normal(), circle.radius, 0.0,
            std::abs(circle.sweep));
    return Acad::eOk;
}

Adesk::Boolean AcDbPolyline::onSegAt(unsigned int index, const AcGePoint2d& point,
                                     double& param) const {
    const SegType type = segType(index);
    if (type == kPoint || type == kEmpty) return Adesk::kFalse;
    const CurvePiece piece = flatPiece(index);
    const AcGePoint3d wanted(point.x, point.y, 0.0);
    const double nearest = piece.nearestParam(wanted);
    if (!piece.pointAt(nearest).isEqualTo(wanted)) return Adesk::kFalse;
    param = nearest;
    return Adesk::kTrue;
}

Adesk::Boolean AcDbPolyline::hasBulges() const {
    const auto& bulges = look(bulges_);
    return std::any_of(bulges.begin(), bulges.end(), [](double bulge) { return bulge != 0.0; });
}

Adesk::Boolean AcDbPolyline::hasWidth() const {
    assertReadEnabled();
    return isWide();
}

bool AcDbPolyline::isWide() const {
    if (widths_.empty()) return constantWidth_ > 0.0;
    return std::any_of(widths_.begin(), widths_.end(),
                       [](const Widths& w) { return w.start > 0.0 || w.end > 0.0; });
}

void AcDbPolyline::makeClosedIfStartAndEndVertexCoincide(double distanceTolerance) {
    assertWriteEnabled();
    if (points_.size() < 2 || points_.front().distanceTo(points_.back()) > distanceTolerance)
        return;
    removeVertexAt(static_cast<unsigned>(points_.size() - 1));
    closed_ = true;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    if (look(points_).empty()) {
        width = constantWidth_;
        return Acad::eOk;
    }
    const double first = widths(0).start;
    for (std::size_t i = 0; i < widths_.size(); ++i)
        if (widths_[i].start != first || widths_[i].end != first) return Acad::eAmbiguousOutput;
    width = first;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    assertWriteEnabled();
    if (width < 0.0) return Acad::eInvalidInput;
    widths_.clear();
    constantWidth_ = width;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getEndParam(double& param) const {
    if (look(points_).empty()) return Acad::eDegenerateGeometry;
    param = static_cast<double>(segmentCount());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArea(double& area) const {
    area = std::abs(headless::polylineArea(look(points_), bulges_, closed_));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
    assertWriteEnabled();
    std::reverse(points_.begin(), points_.end());
    std::reverse(identifiers_.begin(), identifiers_.end());
    // What shaped the segment that left a vertex now shapes the one that arrives there. The list
    // without the last vertex's own turns around; that one stays last, as the closing segment's.
    if (!bulges_.empty()) {
        std::reverse(bulges_.begin(), bulges_.end() - 1);
        for (double& bulge : bulges_)
            bulge = 0.0 - bulge; // Never a negative zero, which files would show.
    }
    if (!widths_.empty()) {
        std::reverse(widths_.begin(), widths_.end() - 1);
        for (Widths& w : widths_)
            std::swap(w.start, w.end);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPlane(AcGePlane& plane, AcDb::Planarity& kind) const {
    assertReadEnabled();
    plane = AcGePlane(toWorld(points_.empty() ? AcGePoint2d() : points_.front()), normal_);
    kind = AcDb::kPlanar;
    return Acad::eOk;
}

void AcDbPolyline::getEcs(AcGeMatrix3d& ecs) const { ecs = headless::ocsMatrix(look(normal_)); }

Acad::ErrorStatus AcDbPolyline::subGetGeomExtents(AcDbExtents& extents) const {
    if (isWide()) return headless::extentsUnder(*this, AcGeMatrix3d::kIdentity, extents);
    // In one walk over the vertices: piece by piece it would cost several times as much.
    const headless::Extents3d box = headless::polylineExtents(points_, bulges_, closed_, elevation_,
                                                              headless::ocsMatrix(normal_));
    if (!box.isValid()) return Acad::eNullExtents;
    extents = {box.min, box.max};
    return Acad::eOk;
}

void AcDbPolyline::subDescribe(headless::GeometrySink& sink) const {
    AcDbCurve::subDescribe(sink);
    if (!isWide()) return;
    std::vector<headless::WideSegment> segments;
    for (std::size_t i = 0; i < segmentCount(); ++i)
        segments.push_back({segment(i), widths(i).start, widths(i).end});
    headless::describeWide(sink, segments, closed_, elevation_, normal_);
}

CurvePiece AcDbPolyline::flatPiece(std::size_t index) const {
    const BulgeSegment s = segment(index);
    const AcGePoint3d start(s.start.x, s.start.y, 0.0);
    const AcGePoint3d end(s.end.x, s.end.y, 0.0);
    if (s.bulge == 0.0) return CurvePiece::segment(start, end, 0.0, 1.0);
    return CurvePiece::bulgeArc(start, end, AcGeVector3d::kZAxis, s.bulge, 0.0, 1.0);
}

CurvePiece AcDbPolyline::worldPiece(std::size_t index) const {
    const AcGePoint3d start = toWorld(points_[index]);
    const AcGePoint3d end = toWorld(points_[next(index)]);
    const auto param = static_cast<double>(index);
    if (bulge(index) == 0.0) return CurvePiece::segment(start, end, param, param + 1.0);
    return CurvePiece::bulgeArc(start, end, normal_, bulge(index), param, param + 1.0);
}

std::optional<CurvePiece> AcDbPolyline::pieceAt(double param) const {
    const std::size_t count = segmentCount();
    if (count == 0) return AcDbCurve::pieceAt(param);
    const auto end = static_cast<double>(count);
    if (!(param >= -kOvershoot && param <= end + kOvershoot)) return std::nullopt;
    return worldPiece(static_cast<std::size_t>(std::clamp(param, 0.0, end - 1.0)));
}

bool AcDbPolyline::forEachPiece(const headless::PieceVisitor& visit) const {
    if (points_.empty()) return true;
    if (segmentCount() == 0) {
        const AcGePoint3d only = toWorld(points_.front());
        return visit(CurvePiece::segment(only, only, 0.0, 0.0));
    }
    for (std::size_t i = 0; i < segmentCount(); ++i)
        if (!visit(worldPiece(i))) return false;
    return true;
}

Acad::ErrorStatus AcDbPolyline::subExplode(headless::NewEntities& parts) const {
    return explodePieces(parts, normal_, thickness_);
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    if (!flat.keepsCircles() && hasBulges()) return Acad::eCannotScaleNonUniformly;
    double height = flat.local().entry[2][2] * elevation_ + flat.local().entry[2][3];
    for (AcGePoint2d& point : points_) {
        const AcGePoint3d moved = flat.local() * AcGePoint3d(point.x, point.y, elevation_);
        point.set(moved.x, moved.y);
    }
    elevation_ = height;
    normal_ = flat.normal();
    thickness_ *= flat.normalScale();
    constantWidth_ *= flat.scale();
    for (Widths& w : widths_)
        w = {w.start * flat.scale(), w.end * flat.scale()};
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint2d& point : points_)
        points.append(toWorld(point));
    return Acad::eOk;
}
