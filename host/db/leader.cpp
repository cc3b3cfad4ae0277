#include "db/leader.h"

#include <memory>

#include "db/curve_piece.h"
#include "db/dim_style_table.h"
#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/flat_transform.h"
#include "db/named_fields.h"
#include "db/spline.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbLeader, AcDbCurve, "LEADER")

using headless::CurvePiece;
namespace field = headless::field;

AcGePoint3d AcDbLeader::vertexAt(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < look(vertices_).size() ? vertices_[at] : AcGePoint3d();
}

Acad::ErrorStatus AcDbLeader::setVertexAt(int index, const AcGePoint3d& point) {
    assertWriteEnabled();
    const auto at = static_cast<std::size_t>(index);
    if (index < 0 || at >= vertices_.size()) return Acad::eInvalidIndex;
    vertices_[at] = point;
    return Acad::eOk;
}

bool AcDbLeader::appendVertex(const AcGePoint3d& point) {
    assertWriteEnabled();
    if (!vertices_.empty() && vertices_.back().isEqualTo(point)) return false;
    vertices_.push_back(point);
    return true;
}

bool AcDbLeader::forEachPiece(const headless::PieceVisitor& visit) const {
    if (splined_) {
        auto smooth = headless::splineThrough(vertices_, std::nullopt, std::nullopt);
        if (smooth)
            return visit(
                CurvePiece::spline(std::make_shared<const headless::Spline>(std::move(*smooth))));
    }
    for (std::size_t i = 0; i + 1 < vertices_.size(); ++i) {
        const auto param = static_cast<double>(i);
        if (!visit(CurvePiece::segment(vertices_[i], vertices_[i + 1], param, param + 1.0)))
            return false;
    }
    return true;
}

Acad::ErrorStatus AcDbLeader::subExplode(headless::NewEntities& parts) const {
    constexpr std::size_t kLeastOfCurve = 3;
    if (!splined_ || vertices_.size() < kLeastOfCurve) return explodePieces(parts, normal_, 0.0);
    AcGePoint3dArray points;
    for (const AcGePoint3d& vertex : vertices_)
        points.append(vertex);
    headless::addPart(parts, *this, std::make_unique<AcDbSpline>(points));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subTransformBy(const AcGeMatrix3d& transform) {
    const headless::FlatTransform flat(transform, normal_);
    for (AcGePoint3d& vertex : vertices_)
        vertex.transformBy(transform);
    normal_ = flat.normal();
    const AcGeVector3d horizontal = transform * horizontal_;
    if (!horizontal.isZeroLength()) horizontal_ = horizontal.normal();
    blockOffset_.transformBy(transform);
    annotationOffset_.transformBy(transform);
    textHeight_ *= flat.scale();
    textWidth_ *= flat.scale();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const AcGePoint3d& vertex : vertices_)
        points.append(vertex);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbCurve::dxfInFields(filer); status != Acad::eOk) return status;
    field::read(*filer, filer->subclass("AcDbLeader"),
                field::Symbol{3, AcDbDimStyleTableRecord::desc(), style_},
                field::Points{10, vertices_}, field::Real{40, textHeight_},
                field::Real{41, textWidth_}, field::Flag{71, arrowHead_}, field::Flag{72, splined_},
                field::Normal{normal_}, field::Point{211, horizontal_},
                field::Point{212, blockOffset_}, field::Point{213, annotationOffset_},
                field::Id{340, annotation_});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::dxfOutFields(AcDbDxfFiler* filer) const {
    if (const auto status = AcDbCurve::dxfOutFields(filer); status != Acad::eOk) return status;
    static constexpr std::int16_t kCodes[] = {3,   10,  20,  30,  40,  41,  71,  72,
                                              76,  210, 220, 230, 211, 221, 231, 212,
                                              222, 232, 213, 223, 233, 340};
    headless::DxfOutput& out = filer->output();
    out.subclass("AcDbLeader", kCodes);
    out.symbol(3, style_);
    out.integer(71, arrowHead_ ? 1 : 0);
    out.integer(72, splined_ ? 1 : 0);
    out.real(40, textHeight_);
    out.real(41, textWidth_);
    out.integer(76, std::ssize(vertices_));
    for (const AcGePoint3d& vertex : vertices_)
        out.point(10, vertex);
    if (!annotation_.isErased()) out.handle(340, annotation_);
    out.point(210, normal_);
    out.point(211, horizontal_);
    out.point(212, blockOffset_);
    if (out.since(headless::DrawingVersion::kR14)) out.point(213, annotationOffset_);
    return Acad::eOk;
}

void AcDbLeader::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbCurve::forEachReference(visit);
    visit(style_, headless::ReferenceKind::kHardPointer);
    visit(annotation_, headless::ReferenceKind::kSoftPointer);
}
