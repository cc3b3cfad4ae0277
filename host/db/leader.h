// Arrows that lead to an annotation.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "db/curve.h"

/// A chain of segments from the arrow's tip to the annotation, in world coordinates.
class AcDbLeader : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbLeader);

    AcDbLeader() = default;

    int numVertices() const { return static_cast<int>(look(vertices_).size()); }
    /// The origin for no such vertex.
    AcGePoint3d vertexAt(int index) const;
    /// eInvalidIndex for no such vertex.
    Acad::ErrorStatus setVertexAt(int index, const AcGePoint3d& point);
    /// False for a point at the last vertex.
    bool appendVertex(const AcGePoint3d& point);
    AcGePoint3d firstVertex() const { return vertexAt(0); }
    AcGePoint3d lastVertex() const { return vertexAt(numVertices() - 1); }
    bool hasArrowHead() const { return look(arrowHead_); }
    /// True when the leader is drawn as a smooth curve.
    bool isSplined() const { return look(splined_); }
    AcGeVector3d normal() const { return look(normal_); }
    AcDbObjectId dimensionStyle() const { return look(style_); }
    AcDbObjectId annotationObjId() const { return look(annotation_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;
    bool keepsExtents() const override { return false; }

private:
    /// The arrow's length and breadth from its tip on, and the block that draws it: none for a
    /// filled triangle.
    struct Head {
        AcGeVector3d inward;
        AcGeVector3d across;
        AcDbObjectId block;
    };
    /// Nothing for a leader that shows no arrow.
    std::optional<Head> head() const;
    std::array<AcGePoint3d, 3> triangle(const Head& head) const;
    AcGeMatrix3d blockTransform(const Head& head) const;

    std::vector<AcGePoint3d> vertices_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcGeVector3d horizontal_ = AcGeVector3d::kXAxis; // of the annotation
    AcGeVector3d blockOffset_;                       // from the last vertex to a block's place
    AcGeVector3d annotationOffset_;                  // from the last vertex to the annotation's
    double textHeight_ = 1.0;
    double textWidth_ = 1.0;
    AcDbObjectId style_;
    AcDbObjectId annotation_;
    bool arrowHead_ = true;
    bool splined_ = false;
};
