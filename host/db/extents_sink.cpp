// The box around an entity as one use of its described geometry.
#include <array>
#include <cstdint>
#include <map>

#include "db/curve_piece.h"
#include "db/geometry_sink.h"

namespace headless {

namespace {

class ExtentsSink : public GeometrySink {
public:
    explicit ExtentsSink(IncludeText texts) : texts_(texts) {}

    const AcDbExtents& box() const { return box_; }
    bool metEndless() const { return endless_; }

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
    void onText(const std::array<AcGePoint3d, 4>& corners) override {
        if (texts_ == IncludeText::no) return;
        for (const AcGePoint3d& corner : corners)
            onPoint(corner);
    }
    void onEndless(const AcGePoint3d& /*base*/, const AcGeVector3d& /*along*/) override {
        endless_ = true;
    }
    void onReference(const Reference& reference) override;

private:
    /// A block and the linear part of a transform of it: all references that differ only in their
    /// place have boxes of one size.
    struct Shape {
        AcDbStub* block;
        std::array<double, 9> linear;
        auto operator<=>(const Shape&) const = default;
    };

    static AcGeMatrix3d linearPart(const AcGeMatrix3d& transform);
    AcDbExtents shapeExtents(AcDbObjectId block, const AcGeMatrix3d& linear);
    AcDbExtents blockExtents(AcDbObjectId block, const AcGeMatrix3d& transform);

    // Blocks within blocks can hold more pieces than there are atoms. Past this many, which take
    // about a second, the box of a nested reference is that of its block's own box, transformed.
    // Kept shapes count for more, as they take room too.
    static constexpr std::uint64_t kMostPieces = 20'000'000;
    static constexpr std::uint64_t kPiecesPerShape = 200;

    IncludeText texts_;
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
    if (const auto known = shapes_.find(shape); known != shapes_.end()) return known->second;

    pieces_ += kPiecesPerShape;
    const AcDbExtents outer = box_;
    box_ = AcDbExtents();
    describeBlock(block, linear);
    const AcDbExtents box = box_;
    box_ = outer;
    shapes_.emplace(shape, box);
    return box;
}

AcDbExtents ExtentsSink::blockExtents(AcDbObjectId block, const AcGeMatrix3d& transform) {
    AcDbExtents box;
    if (pieces_ > kMostPieces) {
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
                               AcDbExtents& extents, IncludeText texts) {
    ExtentsSink sink(texts);
    sink.describe(entity, transform);
    if (isEmpty(sink.box())) return sink.metEndless() ? Acad::eInvalidExtents : Acad::eNullExtents;
    extents = sink.box();
    return Acad::eOk;
}

} // namespace headless
