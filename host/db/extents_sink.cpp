// The box around an entity as one use of its described geometry.
#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <utility>

#include "db/block_memory.h"
#include "db/block_table.h"
#include "db/curve_piece.h"
#include "db/entity.h"
#include "db/geometry_sink.h"
#include "db/residence.h"

namespace headless {

namespace {

class ExtentsSink : public GeometrySink {
public:
    /// @param asker  whose box it will be; null when nobody keeps it.
    ExtentsSink(BoxOf part, AcDbStub* asker) : part_(part), asker_(asker) {}

    /// The box of what was described, see extentsUnder.
    Acad::ErrorStatus give(AcDbExtents& extents) const {
        if (isEmpty(box_)) return endless_ ? Acad::eInvalidExtents : Acad::eNullExtents;
        extents = box_;
        return Acad::eOk;
    }
    void addBlock(AcDbObjectId block) { box_.addExt(blockExtents(block, AcGeMatrix3d::kIdentity)); }

protected:
    void onPoint(const AcGePoint3d& position) override {
        ++pieces_;
        box_.addPoint(position);
    }
    void onSegment(const AcGePoint3d& start, const AcGePoint3d& end) override {
        ++pieces_;
        box_.addPoint(start);
        box_.addPoint(end);
    }
    void onCurve(const CurvePiece& piece) override {
        ++pieces_;
        const Extents3d box = piece.extents();
        if (box.isValid()) box_.addExt({box.min, box.max});
    }
    void onText(const std::array<AcGePoint3d, 4>& corners) override { addFilled(corners); }
    void onArea(const std::vector<AcGePoint3d>& corners) override { addFilled(corners); }
    void onEndless(const AcGePoint3d& /*base*/, const AcGeVector3d& /*along*/) override {
        endless_ = true;
    }
    void onReference(const Reference& reference) override;

private:
    /// All references to a block that differ only in their place have boxes of one size.
    struct Shape {
        AcDbStub* block;
        LinearPart linear;
        auto operator<=>(const Shape&) const = default;
    };

    void addFilled(std::span<const AcGePoint3d> corners) {
        if (part_ == BoxOf::lines) return;
        for (const AcGePoint3d& corner : corners)
            onPoint(corner);
    }
    static bool isVast(AcDbObjectId block) {
        const auto* const record = Residence::peek<AcDbBlockTableRecord>(block);
        const BlockMemory* const memory = record == nullptr ? nullptr : record->memoryIfAny();
        return memory != nullptr && memory->isVast();
    }
    static AcGeMatrix3d linearPart(const AcGeMatrix3d& transform);
    AcDbExtents shapeExtents(AcDbObjectId block, const AcGeMatrix3d& linear);
    AcDbExtents measure(AcDbObjectId block, const AcGeMatrix3d& linear);
    AcDbExtents blockExtents(AcDbObjectId block, const AcGeMatrix3d& transform);

    // Blocks within blocks can hold more pieces than there are atoms. Past this many, which take
    // about a second, the box of a nested reference is that of its block's own box, transformed,
    // and so it is from then on for all blocks that were being measured: asking again for each of
    // their references would take as long every time. Kept shapes count for more, as they take room
    // too.
    static constexpr std::uint64_t kMostPieces = 20'000'000;
    static constexpr std::uint64_t kPiecesPerShape = 200;

    BoxOf part_;
    AcDbStub* asker_; // The entity or the block being measured.
    AcDbExtents box_;
    bool endless_ = false;
    std::uint64_t pieces_ = 0;
    std::map<Shape, AcDbExtents> shapes_;
};

AcGeMatrix3d ExtentsSink::linearPart(const AcGeMatrix3d& transform) {
    AcGeMatrix3d linear = transform;
    return linear.setTranslation({});
}

AcDbExtents ExtentsSink::shapeExtents(AcDbObjectId block, const AcGeMatrix3d& linear) {
    Shape shape{block, {}};
    for (std::size_t i = 0; i < 9; ++i)
        shape.linear[i] = linear.entry[i / 3][i % 3];
    const auto* const record = Residence::peek<AcDbBlockTableRecord>(block);
    if (record == nullptr) return {};
    BlockMemory& memory = record->memory();
    if (asker_ != nullptr) memory.addDependent(*block, *asker_);
    const bool lasts = part_ == BoxOf::everything;
    if (lasts)
        if (const auto known = memory.box(shape.linear)) return *known;
    if (const auto known = shapes_.find(shape); known != shapes_.end()) return known->second;

    const bool wasWithin = pieces_ <= kMostPieces;
    pieces_ += kPiecesPerShape;
    const AcDbExtents box = measure(block, linear);
    shapes_.emplace(shape, box);
    if (wasWithin && pieces_ > kMostPieces) memory.noteVast(*block);
    // Beyond the limit it may be larger than need be.
    if (lasts && (pieces_ <= kMostPieces || memory.isVast()))
        memory.keepBox(*block, shape.linear, box);
    return box;
}

AcDbExtents ExtentsSink::measure(AcDbObjectId block, const AcGeMatrix3d& linear) {
    const AcDbExtents outer = std::exchange(box_, AcDbExtents());
    AcDbStub* const asker = std::exchange(asker_, block);
    describeBlock(block, linear);
    asker_ = asker;
    return std::exchange(box_, outer);
}

AcDbExtents ExtentsSink::blockExtents(AcDbObjectId block, const AcGeMatrix3d& transform) {
    AcDbExtents box;
    if (pieces_ > kMostPieces || isVast(block)) {
        box = shapeExtents(block, AcGeMatrix3d::kIdentity);
        box.transformBy(transform);
        return box;
    }
    box = shapeExtents(block, linearPart(transform));
    box.transformBy(AcGeMatrix3d::translation(transform.translation()));
    return box;
}

void ExtentsSink::onReference(const Reference& reference) {
    ++pieces_;
    const AcDbExtents cell = blockExtents(reference.block, reference.transform);
    if (reference.columns < 1 || reference.rows < 1) return;
    // The cells of an array are alike, so those at its corners bound all of them.
    const AcGeVector3d across = reference.columnStep * (reference.columns - 1);
    const AcGeVector3d up = reference.rowStep * (reference.rows - 1);
    for (const AcGeVector3d& step : {AcGeVector3d(), across, up, across + up}) {
        AcDbExtents placed = cell;
        placed.transformBy(AcGeMatrix3d::translation(step));
        box_.addExt(placed);
    }
}

} // namespace

Acad::ErrorStatus extentsUnder(const AcDbEntity& entity, const AcGeMatrix3d& transform,
                               AcDbExtents& extents, BoxOf part) {
    AcDbStub* const asker = part == BoxOf::everything ? entity.objectId() : AcDbObjectId::kNull;
    ExtentsSink sink(part, asker);
    sink.describe(entity, transform);
    return sink.give(extents);
}

Acad::ErrorStatus blockExtents(AcDbObjectId block, AcDbExtents& extents) {
    ExtentsSink sink(BoxOf::everything, nullptr);
    sink.addBlock(block);
    return sink.give(extents);
}

} // namespace headless
