// Vertices that are objects of their own, of the old polylines and meshes.
#pragma once

#include <array>

#include "db/entity.h"

class AcDbVertex : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbVertex);

    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    AcDbVertex() = default;
};

/// A vertex of a 2D polyline, in the polyline's object coordinate system.
class AcDb2dVertex : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dVertex);

    AcDb2dVertex() = default;
    explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double startWidth = 0.0,
                          double endWidth = 0.0, double tangent = 0.0,
                          Adesk::Int32 vertexIdentifier = 0);

    AcDb::Vertex2dType vertexType() const { return look(type_); }
    AcGePoint3d position() const { return look(position_); }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position) {
        return change(position_, position);
    }
    double startWidth() const { return look(shape_).startWidth; }
    Acad::ErrorStatus setStartWidth(double width) {
        return change(shape_, Shape{shape_.bulge, width, shape_.endWidth, true});
    }
    double endWidth() const { return look(shape_).endWidth; }
    Acad::ErrorStatus setEndWidth(double width) {
        return change(shape_, Shape{shape_.bulge, shape_.startWidth, width, true});
    }
    double bulge() const { return look(shape_).bulge; }
    Acad::ErrorStatus setBulge(double bulge) { return change(shape_.bulge, bulge); }
    Adesk::Boolean isTangentUsed() const { return look(tangentUsed_); }
    Acad::ErrorStatus useTangent() { return change(tangentUsed_, true); }
    Acad::ErrorStatus ignoreTangent() { return change(tangentUsed_, false); }
    double tangent() const { return look(tangent_); }
    Acad::ErrorStatus setTangent(double tangent) { return change(tangent_, tangent); }
    Adesk::Int32 vertexIdentifier() const { return look(identifier_); }
    Acad::ErrorStatus setVertexIdentifier(Adesk::Int32 id) { return change(identifier_, id); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    friend class AcDb2dPolyline;

    /// What a vertex says of the segment that leaves it.
    struct Shape {
        double bulge = 0.0;
        double startWidth = 0.0;
        double endWidth = 0.0;
        bool ownWidths = false; // stated: else files take the polyline's default widths
        Shape reversed() const { return {-bulge, endWidth, startWidth, ownWidths}; }
    };

    AcGePoint3d position_;
    Shape shape_;
    double tangent_ = 0.0;
    Adesk::Int32 identifier_ = 0;
    AcDb::Vertex2dType type_ = AcDb::k2dVertex;
    bool tangentUsed_ = false;
};

namespace headless {

/// What vertices in space have in common: a position in world coordinates.
class SpaceVertex : public AcDbVertex {
public:
    AcGePoint3d position() const { return look(position_); }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position) {
        return change(position_, position);
    }
    /// The position whether or not the vertex is open.
    const AcGePoint3d& place() const { return position_; }
    void place(const AcGePoint3d& position) { position_ = position; }
    /// True for a control point of a smoothed polyline or mesh, which is not drawn.
    bool isFrame() const { return type_ == AcDb::k3dControlVertex; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    SpaceVertex() = default;
    explicit SpaceVertex(const AcGePoint3d& position) : position_(position) {}

    /// What tells the kind of vertex in records: a subclass marker and bits of the flags.
    struct RecordKind {
        const char* marker;
        std::int64_t flags;
    };
    virtual RecordKind recordKind() const = 0;

    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    void subDescribe(GeometrySink& sink) const override;

    AcGePoint3d position_;
    AcDb::Vertex3dType type_ = AcDb::k3dSimpleVertex;
};

} // namespace headless

class AcDb3dPolylineVertex : public headless::SpaceVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex);

    AcDb3dPolylineVertex() = default;
    explicit AcDb3dPolylineVertex(const AcGePoint3d& position) : SpaceVertex(position) {}

    AcDb::Vertex3dType vertexType() const { return look(type_); }

protected:
    RecordKind recordKind() const override;
};

class AcDbPolygonMeshVertex : public headless::SpaceVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolygonMeshVertex);

    AcDbPolygonMeshVertex() = default;
    explicit AcDbPolygonMeshVertex(const AcGePoint3d& position) : SpaceVertex(position) {}

    AcDb::Vertex3dType vertexType() const { return look(type_); }

protected:
    RecordKind recordKind() const override;
};

class AcDbPolyFaceMeshVertex : public headless::SpaceVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyFaceMeshVertex);

    AcDbPolyFaceMeshVertex() = default;
    explicit AcDbPolyFaceMeshVertex(const AcGePoint3d& position) : SpaceVertex(position) {}

protected:
    RecordKind recordKind() const override;
};

/// A face of a polyface mesh: up to four of the mesh's vertices, counted from 1; 0 is none and a
/// negative number hides the edge that leaves the vertex.
class AcDbFaceRecord : public AcDbVertex {
public:
    ACRX_DECLARE_MEMBERS(AcDbFaceRecord);

    AcDbFaceRecord() = default;
    AcDbFaceRecord(Adesk::Int16 vtx0, Adesk::Int16 vtx1, Adesk::Int16 vtx2, Adesk::Int16 vtx3)
        : vertices_{vtx0, vtx1, vtx2, vtx3} {}

    /// Corners 0 to 3; eInvalidIndex beyond.
    Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, Adesk::Int16& vertex) const;
    Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, Adesk::Int16 vertex);
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, Adesk::Boolean& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
    Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);
    /// The corners whether or not the face is open.
    const std::array<Adesk::Int16, 4>& corners() const { return vertices_; }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& /*transform*/) override {
        return Acad::eOk;
    }

private:
    std::array<Adesk::Int16, 4> vertices_{};
};
