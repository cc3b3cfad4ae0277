// Bundles of parallel lines.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "db/curve_piece.h"
#include "db/entity.h"

/// Parallel lines along a chain of vertices, in world coordinates.
class AcDbMline : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbMline);

    AcDbMline() = default;

    int numVertices() const { return static_cast<int>(look(vertices_).size()); }
    /// The origin for no such vertex.
    AcGePoint3d vertexAt(int index) const;
    double scale() const { return look(scale_); }
    /// 0 top, 1 zero, 2 bottom: which line runs through the vertices.
    /// The colour of the area between the outermost lines; nothing when it is not filled. Whether
    /// or not the multiline is open.
    std::optional<AcCmEntityColor> fillOf() const;
    Adesk::Int8 justification() const { return look(justification_); }
    bool closedMline() const { return look(closed_); }
    AcGeVector3d normal() const { return look(normal_); }
    AcDbObjectId style() const { return look(style_); }

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

protected:
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;

private:
    /// The lines of one element from a vertex on: where they begin and break, as distances along
    /// the segment from the miter on, and likewise for the filling.
    struct Element {
        std::vector<double> lines;
        std::vector<double> fills;
    };
    struct Vertex {
        AcGePoint3d place;
        AcGeVector3d direction = AcGeVector3d::kXAxis; // of the segment that leaves it
        AcGeVector3d miter = AcGeVector3d::kYAxis;
        std::vector<Element> elements;

        void transformBy(const AcGeMatrix3d& transform, double scale);
        void write(headless::DxfOutput& out) const;
    };

    /// A line that is drawn, in the look of an element of the style.
    struct Stroke {
        std::size_t element;
        headless::CurvePiece piece;
    };
    struct Caps {
        bool line, outerArc, innerArcs;
    };

    std::size_t elementCount() const;
    /// Where the line of an element runs past a vertex.
    static AcGePoint3d elementPoint(const Vertex& vertex, std::size_t element);
    /// The lines of all elements, then the joints and the caps.
    std::vector<Stroke> strokes() const;
    /// Adds the lines of an element between two vertices, leaving its breaks open.
    static void addElement(std::vector<Stroke>& strokes, std::size_t element, const Vertex& from,
                           const Vertex& to);
    void addCaps(std::vector<Stroke>& strokes, const Vertex& end, const AcGeVector3d& outward,
                 const Caps& caps) const;
    std::unique_ptr<AcDbEntity> partOf(const headless::CurvePiece& piece) const;
    template <class Visit>
    void forEachSegment(const Visit& visit) const;
    bool readVertexGroup(AcDbDxfFiler& filer, const headless::DxfTag& tag);

    std::vector<Vertex> vertices_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    AcDbObjectId style_;
    double scale_ = 1.0;
    Adesk::Int8 justification_ = 0;
    bool closed_ = false;
    bool startCaps_ = true; // shown as far as the style asks for them
    bool endCaps_ = true;
};
