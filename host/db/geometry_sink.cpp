#include "db/geometry_sink.h"

#include <algorithm>
#include <cmath>

#include "db/attribute.h"
#include "db/block_table.h"
#include "db/curve_piece.h"
#include "db/residence.h"

namespace headless {

namespace {

// Far beyond any drawing that people make, and well within the stack.
constexpr std::size_t kDeepestReference = 128;

} // namespace

void GeometrySink::describe(const AcDbEntity& entity) { entity.subDescribe(*this); }

void GeometrySink::describe(const AcDbEntity& entity, const AcGeMatrix3d& transform) {
    const AcGeMatrix3d outer = toWorld_;
    toWorld_ = outer * transform;
    describe(entity);
    toWorld_ = outer;
}

void GeometrySink::point(const AcGePoint3d& position) { onPoint(toWorld_ * position); }

void GeometrySink::segment(const AcGePoint3d& start, const AcGePoint3d& end) {
    onSegment(toWorld_ * start, toWorld_ * end);
}

void GeometrySink::curve(const CurvePiece& piece) {
    switch (piece.kind()) {
    case CurvePiece::Kind::segment:
        segment(piece.start(), piece.end());
        break;
    case CurvePiece::Kind::endless: {
        const AcGePoint3d base = toWorld_ * piece.pointAt(0.0);
        const AcGeVector3d along = toWorld_ * piece.firstDerivative(0.0);
        onEndless(base, along);
        if (std::isinf(piece.startParam())) onEndless(base, -along);
        break;
    }
    default:
        onCurve(piece.transformed(toWorld_));
        break;
    }
}

void GeometrySink::text(const std::array<AcGePoint3d, 4>& corners) {
    std::array<AcGePoint3d, 4> placed = corners;
    for (AcGePoint3d& corner : placed)
        corner.transformBy(toWorld_);
    onText(placed);
}

void GeometrySink::area(std::span<const AcGePoint3d> corners) {
    std::vector<AcGePoint3d> placed(corners.begin(), corners.end());
    for (AcGePoint3d& corner : placed)
        corner.transformBy(toWorld_);
    onArea(placed);
}

void GeometrySink::reference(const Reference& reference) {
    AcDbStub* const block = reference.block;
    const bool recurs =
        std::find(openBlocks_.begin(), openBlocks_.end(), block) != openBlocks_.end();
    if (block == nullptr || recurs || openBlocks_.size() >= kDeepestReference) return;

    Reference placed = reference;
    placed.transform = toWorld_ * reference.transform;
    placed.columnStep = toWorld_ * reference.columnStep;
    placed.rowStep = toWorld_ * reference.rowStep;
    openBlocks_.push_back(block);
    onReference(placed);
    openBlocks_.pop_back();
}

void GeometrySink::onReference(const Reference& reference) {
    for (int row = 0; row < reference.rows; ++row) {
        for (int column = 0; column < reference.columns; ++column) {
            const AcGeVector3d step = reference.columnStep * column + reference.rowStep * row;
            describeBlock(reference.block, AcGeMatrix3d::translation(step) * reference.transform);
        }
    }
}

void GeometrySink::describeBlock(AcDbObjectId block, const AcGeMatrix3d& transform) {
    const auto* const record = Residence::peek<AcDbBlockTableRecord>(block);
    if (record == nullptr) return;
    for (const AcDbObjectId id : record->entityIds()) {
        const auto* const entity = Residence::peek<AcDbEntity>(id);
        if (entity != nullptr && !entity->isErased() && isShownInReferences(*entity))
            describeIn(*entity, transform);
    }
}

void GeometrySink::describeIn(const AcDbEntity& entity, const AcGeMatrix3d& transform) {
    const AcGeMatrix3d outer = toWorld_;
    toWorld_ = transform;
    describe(entity);
    toWorld_ = outer;
}

bool isShownInReferences(const AcDbEntity& entity) {
    const auto* const definition = AcDbAttributeDefinition::cast(&entity);
    return definition == nullptr || definition->isDrawnInReferences();
}

} // namespace headless
