#include "db/leader.h"

#include <array>
#include <cwchar>
#include <memory>

#include "db/block_reference.h"
#include "db/curve_piece.h"
#include "db/dim_style_table.h"
#include "db/dxf_output.h"
#include "db/explode.h"
#include "db/flat_transform.h"
#include "db/geometry_sink.h"
#include "db/named_fields.h"
#include "db/object_data.h"
#include "db/residence.h"
#include "db/solid.h"
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

namespace {

using LeaderArrow = AcDbDimStyleTableRecord::LeaderArrow;

/// Puts what a leader says against its style into `arrow`.
void takeOverrides(const AcDbLeader& leader, LeaderArrow& arrow) {
    constexpr int kScale = 40;
    constexpr int kSize = 41;
    constexpr int kBlock = 341;
    constexpr std::int16_t kVariable = 1070; // its number, before its value
    std::int16_t variable = 0;
    for (const headless::DataItem& item : headless::ObjectData::xdata(leader)) {
        const auto* const number = std::get_if<std::int16_t>(&item.value);
        if (item.code == kVariable && number != nullptr && variable == 0) {
            variable = *number;
            continue;
        }
        if (const auto* const real = std::get_if<double>(&item.value)) {
            if (variable == kScale) arrow.scale = *real;
            if (variable == kSize) arrow.size = *real;
        }
        if (variable == kBlock && leader.database() != nullptr)
            arrow.block = headless::Residence::find(
                *leader.database(), std::wcstoull(std::wstring(item.text()).c_str(), nullptr, 16));
        variable = 0;
    }
}

/// The arrow in drawing units.
LeaderArrow arrowOf(const AcDbLeader& leader, AcDbObjectId style) {
    LeaderArrow arrow;
    if (const auto* const record = headless::Residence::peek<AcDbDimStyleTableRecord>(style))
        arrow = record->leaderArrow();
    takeOverrides(leader, arrow);
    arrow.size *= arrow.scale > 0.0 ? arrow.scale : 1.0;
    return arrow;
}

} // namespace

std::optional<AcDbLeader::Head> AcDbLeader::head() const {
    if (!arrowHead_ || vertices_.size() < 2) return std::nullopt;
    AcGeVector3d inward;
    forEachPiece([&](const CurvePiece& piece) {
        inward = piece.firstDerivative(piece.startParam());
        return false;
    });
    const LeaderArrow arrow = arrowOf(*this, style_);
    // There is no room for an arrow on a line that is not twice as long.
    if (!(arrow.size > 0.0) || inward.isZeroLength() ||
        vertices_[0].distanceTo(vertices_[1]) < 2.0 * arrow.size)
        return std::nullopt;
    const AcGeVector3d along = inward.normal() * arrow.size;
    return Head{along, normal_.crossProduct(along), arrow.block};
}

std::array<AcGePoint3d, 3> AcDbLeader::triangle(const Head& head) const {
    constexpr double kHalfWidth = 1.0 / 6.0;
    const AcGePoint3d foot = vertices_.front() + head.inward;
    return {vertices_.front(), foot + head.across * kHalfWidth, foot - head.across * kHalfWidth};
}

AcGeMatrix3d AcDbLeader::blockTransform(const Head& head) const {
    AcGeMatrix3d transform; // The block looks to the right.
    transform.setCoordSystem(vertices_.front(), -head.inward, -head.across,
                             normal_ * head.inward.length());
    return transform;
}

void AcDbLeader::subDescribe(headless::GeometrySink& sink) const {
    AcDbCurve::subDescribe(sink);
    const auto head = this->head();
    if (!head) return;
    if (head->block.isNull()) return sink.area(triangle(*head));
    headless::GeometrySink::Reference drawn;
    drawn.block = head->block;
    drawn.transform = blockTransform(*head);
    sink.reference(drawn);
}

Acad::ErrorStatus AcDbLeader::subExplode(headless::NewEntities& parts) const {
    constexpr std::size_t kLeastOfCurve = 3;
    if (splined_ && vertices_.size() >= kLeastOfCurve) {
        AcGePoint3dArray points;
        for (const AcGePoint3d& vertex : vertices_)
            points.append(vertex);
        headless::addPart(parts, *this, std::make_unique<AcDbSpline>(points));
    } else if (const auto status = explodePieces(parts, normal_, 0.0); status != Acad::eOk) {
        return status;
    }
    const auto head = this->head();
    if (!head) return Acad::eOk;
    if (head->block.isNull()) {
        const auto [tip, left, right] = triangle(*head);
        headless::addPart(parts, *this, std::make_unique<AcDbSolid>(tip, left, right));
        return Acad::eOk;
    }
    auto& drawn = headless::addPart(
        parts, *this, std::make_unique<AcDbBlockReference>(vertices_.front(), head->block));
    return drawn.setBlockTransform(blockTransform(*head));
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
