// The drawn geometry of entities, piece by piece, with references resolved.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "db/extents.h"
#include "db/object_id.h"

class AcDbBlockTableRecord;
class AcDbEntity;

namespace headless {

class CurvePiece;

/// Receives what entities consist of. Derive from it to measure, pick or draw; pieces arrive in the
/// coordinates of the outermost caller, exact under any transform.
class GeometrySink {
public:
    virtual ~GeometrySink() = default;
    GeometrySink(const GeometrySink&) = delete;
    GeometrySink& operator=(const GeometrySink&) = delete;

    /// Receives the geometry of an entity, whether or not it is open.
    void describe(const AcDbEntity& entity);
    /// The same under a transform.
    void describe(const AcDbEntity& entity, const AcGeMatrix3d& transform);

    // What entities call, in their own coordinates.
    void point(const AcGePoint3d& position);
    void segment(const AcGePoint3d& start, const AcGePoint3d& end);
    void curve(const CurvePiece& piece);
    /// A line of text by the corners of its box: lower left, lower right, upper right, upper left.
    void text(const std::array<AcGePoint3d, 4>& corners);
    /// A filled polygon in one plane, whose boundary counts as drawn with it.
    void area(std::span<const AcGePoint3d> corners);
    /// The contents of a block under a transform, repeated in `columns` by `rows` cells each moved
    /// by the steps. A block that contains itself is passed over where it would recur.
    struct Reference {
        AcDbObjectId block;
        AcGeMatrix3d transform;
        int columns = 1;
        int rows = 1;
        AcGeVector3d columnStep;
        AcGeVector3d rowStep;

        double cells() const { return static_cast<double>(columns) * rows; }
    };
    void reference(const Reference& reference);

protected:
    GeometrySink() = default;

    virtual void onPoint(const AcGePoint3d& position) = 0;
    virtual void onSegment(const AcGePoint3d& start, const AcGePoint3d& end) = 0;
    virtual void onCurve(const CurvePiece& piece) = 0;
    virtual void onText(const std::array<AcGePoint3d, 4>& corners) = 0;
    /// A half line without an end; an endless line is two of them.
    virtual void onEndless(const AcGePoint3d& base, const AcGeVector3d& along) = 0;
    /// By default passed over, as for who asks for curves alone.
    virtual void onArea(const std::vector<AcGePoint3d>& /*corners*/) {}
    /// By default describes the contents of every cell.
    virtual void onReference(const Reference& reference);

    /// Describes the block's contents as seen through `transform` alone.
    void describeBlock(AcDbObjectId block, const AcGeMatrix3d& transform);
    /// Describes one entity as seen through `transform` alone.
    void describeIn(const AcDbEntity& entity, const AcGeMatrix3d& transform);

private:
    AcGeMatrix3d toWorld_;
    std::vector<AcDbStub*> openBlocks_; // The references being followed, outermost first.
};

/// False for what a block holds without showing it in its references: most attribute definitions.
bool isShownInReferences(const AcDbEntity& entity);

/// What a box is put around: the lines that entities draw, with neither the width that some of them
/// have nor texts (single and multiline ones, attributes), or everything.
enum class BoxOf : bool { lines, everything };

/// The box around an entity's geometry under a transform, exact for every curve and through
/// references at any depth. eNullExtents when there is none, eInvalidExtents when it has no bounds.
Acad::ErrorStatus extentsUnder(const AcDbEntity& entity, const AcGeMatrix3d& transform,
                               AcDbExtents& extents, BoxOf part = BoxOf::everything);

/// The box of a block's contents in its own coordinates. Errors as above.
Acad::ErrorStatus blockExtents(AcDbObjectId block, AcDbExtents& extents);

/// The box of what a block reference (or any entity) shows.
inline Acad::ErrorStatus contentExtents(const AcDbEntity& entity, BoxOf part,
                                        AcDbExtents& extents) {
    return extentsUnder(entity, AcGeMatrix3d::kIdentity, extents, part);
}

} // namespace headless
