#include "db/explode.h"

#include <cmath>

#include "db/arc.h"
#include "db/block_table.h"
#include "db/curve_piece.h"
#include "db/dimension.h"
#include "db/dxf_fields.h"
#include "db/line.h"
#include "db/mleader.h"
#include "db/object_state.h"
#include "db/residence.h"

Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray& entities) const {
    assertReadEnabled();
    headless::NewEntities parts;
    const Acad::ErrorStatus status = subExplode(parts);
    if (status != Acad::eOk) return status;
    for (auto& part : parts)
        entities.append(part.release());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subExplode(headless::NewEntities& /*parts*/) const {
    return Acad::eCannotExplodeEntity;
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& transform,
                                                 AcDbEntity*& copy) const {
    assertReadEnabled();
    std::unique_ptr<AcDbEntity> made;
    const Acad::ErrorStatus status = transformedCopy(transform, made);
    copy = made.release();
    return status;
}

Acad::ErrorStatus AcDbEntity::transformedCopy(const AcGeMatrix3d& transform,
                                              std::unique_ptr<AcDbEntity>& copy) const {
    copy.reset(AcDbEntity::cast(headless::ObjectState::cloneOf(*this).release()));
    if (copy == nullptr) return Acad::eNotApplicable;
    Acad::ErrorStatus status = copy->transformBy(transform);
    if (status == Acad::eCannotScaleNonUniformly) {
        copy = unevenForm();
        if (copy != nullptr) status = copy->transformBy(transform);
    }
    if (status != Acad::eOk) copy.reset();
    return status;
}

namespace headless {
namespace {

/// Below it an arc is flatter than the digits of its far centre can tell.
constexpr double kStraightBulge = 1e-8;
/// Dimensions in damaged files may be drawn by blocks that hold them.
constexpr int kDeepest = 4;

/// One piece of a flat polyline: a line, or an arc counter-clockwise whichever way the piece runs.
std::unique_ptr<AcDbEntity> entityOf(const CurvePiece& piece, const AcGeVector3d& normal,
                                     double thickness) {
    if (std::abs(piece.bulge()) < kStraightBulge) {
        auto line = std::make_unique<AcDbLine>(piece.start(), piece.end());
        line->setNormal(normal);
        line->setThickness(thickness);
        return line;
    }
    const AcGePoint3d start = worldToOcs(piece.start(), normal);
    const AcGePoint3d end = worldToOcs(piece.end(), normal);
    const Arc2d flat = arcFromBulge({start.x, start.y}, {end.x, end.y}, piece.bulge());
    const double from = flat.startAngle;
    const double to = flat.startAngle + flat.sweep;
    auto arc = std::make_unique<AcDbArc>(
        ocsToWorld({flat.center.x, flat.center.y, start.z}, normal), normal, flat.radius,
        flat.sweep > 0.0 ? from : to, flat.sweep > 0.0 ? to : from);
    arc->setThickness(thickness);
    return arc;
}

Acad::ErrorStatus addTransformed(NewEntities& parts, const AcDbEntity& entity,
                                 const AcGeMatrix3d& transform, int depth) {
    std::unique_ptr<AcDbEntity> copy;
    const Acad::ErrorStatus status = entity.transformedCopy(transform, copy);
    if (status == Acad::eOk) {
        parts.push_back(std::move(copy));
        return status;
    }
    const bool divisible = AcDbCurve::cast(&entity) != nullptr ||
                           AcDbDimension::cast(&entity) != nullptr ||
                           AcDbMLeader::cast(&entity) != nullptr;
    NewEntities pieces;
    if (!divisible || depth == kDeepest || entity.takeApart(pieces) != Acad::eOk) return status;
    for (const auto& piece : pieces) {
        const Acad::ErrorStatus refusal = addTransformed(parts, *piece, transform, depth + 1);
        if (refusal != Acad::eOk) return refusal;
    }
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus addBlockContents(NewEntities& parts, AcDbObjectId block,
                                   const AcGeMatrix3d& transform) {
    const auto* const record = Residence::peek<AcDbBlockTableRecord>(block);
    if (record == nullptr) return Acad::eNullObjectId;
    for (const AcDbObjectId id : record->entityIds()) {
        const auto* const entity = Residence::peek<AcDbEntity>(id);
        if (entity == nullptr || entity->isErased()) continue;
        const Acad::ErrorStatus status = addTransformed(parts, *entity, transform, 0);
        if (status != Acad::eOk) return status;
    }
    return Acad::eOk;
}

} // namespace headless

Acad::ErrorStatus AcDbCurve::explodePieces(headless::NewEntities& parts, const AcGeVector3d& normal,
                                           double thickness) const {
    forEachPiece([&](const headless::CurvePiece& piece) {
        if (!piece.start().isEqualTo(piece.end()))
            headless::addPart(parts, *this, headless::entityOf(piece, normal, thickness));
        return true;
    });
    return parts.empty() ? Acad::eDegenerateGeometry : Acad::eOk;
}
