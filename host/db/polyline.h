// Lightweight polylines: flat chains of lines and arcs.
#pragma once

#include <memory>
#include <vector>

#include "db/curve.h"

class AcGeCircArc2d;
class AcGeCircArc3d;
class AcGeLineSeg2d;
class AcGeLineSeg3d;

namespace headless {

struct BulgeSegment;

} // namespace headless

/// A chain of lines and arcs in the plane of its normal at its elevation.
///
/// Vertices are points of the object coordinate system. A vertex's bulge, tan(sweep / 4), and
/// widths shape the segment that leaves it; a positive bulge turns counter-clockwise about the
/// normal. The parameter is the vertex number; within an arc it grows with the angle.
class AcDbPolyline : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline);

    enum SegType {
        kLine,
        kArc,
        kCoincident, // of no length
        kPoint,      // nothing leaves the vertex: the last of an open polyline
        kEmpty       // no such vertex
    };

    AcDbPolyline() = default;
    /// Reserves room for the vertices; adds none.
    explicit AcDbPolyline(unsigned int vertexCount);

    unsigned int numVerts() const { return static_cast<unsigned>(look(points_).size()); }

    /// Makes the vertex number `index`, at most numVerts(); later ones move up. Widths of -1 stand
    /// for the constant width. eInvalidIndex beyond the end.
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge = 0.0,
                                  double startWidth = -1.0, double endWidth = -1.0,
                                  Adesk::Int32 vertexIdentifier = 0);
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    /// Removes all vertices, keeping their room when `reuse`, and makes `vertexCount` at the
    /// origin.
    void reset(Adesk::Boolean reuse, unsigned int vertexCount);

    // All of these give eInvalidIndex beyond the last vertex.
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& worldPoint) const;
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& point) const {
        if (index >= look(points_).size()) return Acad::eInvalidIndex;
        point = points_[index];
        return Acad::eOk;
    }
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const {
        if (index >= look(points_).size()) return Acad::eInvalidIndex;
        bulge = this->bulge(index);
        return Acad::eOk;
    }
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
    Acad::ErrorStatus getVertexIdentifierAt(unsigned int index, Adesk::Int32& identifier) const;
    Acad::ErrorStatus setVertexIdentifierAt(unsigned int index, Adesk::Int32 identifier);

    SegType segType(unsigned int index) const;
    /// eInvalidInput when the segment is of another kind. 2D forms are in the object coordinate
    /// system, 3D ones in the world.
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg2d& line) const;
    Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg3d& line) const;
    Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc2d& arc) const;
    Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const;
    /// True when the point lies on the segment within the global tolerance; `param` is then how far
    /// along, from 0 to 1.
    Adesk::Boolean onSegAt(unsigned int index, const AcGePoint2d& point, double& param) const;

    Adesk::Boolean isOnlyLines() const { return !hasBulges(); }
    Adesk::Boolean hasBulges() const;
    Adesk::Boolean hasWidth() const;
    Adesk::Boolean hasVertexIdentifiers() const { return !look(identifiers_).empty(); }
    Adesk::Boolean hasPlinegen() const { return look(plinegen_); }
    void setPlinegen(Adesk::Boolean on) { change(plinegen_, on); }

    bool isClosed() const override { return look(closed_); }
    void setClosed(Adesk::Boolean closed) { change(closed_, closed); }
    /// Closes the polyline and drops its last vertex when that repeats the first within the
    /// distance.
    void makeClosedIfStartAndEndVertexCoincide(double distanceTolerance);

    /// eAmbiguousOutput when the segments' widths differ.
    Acad::ErrorStatus getConstantWidth(double& width) const;
    /// Replaces all widths. eInvalidInput for a negative width.
    Acad::ErrorStatus setConstantWidth(double width);
    double elevation() const { return look(elevation_); }
    void setElevation(double elevation) { change(elevation_, elevation); }
    double thickness() const { return look(thickness_); }
    Acad::ErrorStatus setThickness(double thickness) { return change(thickness_, thickness); }
    AcGeVector3d normal() const { return look(normal_); }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal) {
        return changeNormal(normal_, normal);
    }

    void minimizeMemory();
    void maximizeMemory() {}

    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getArea(double& area) const override;
    Acad::ErrorStatus reverseCurve() override;
    bool isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane, AcDb::Planarity& kind) const override;
    void getEcs(AcGeMatrix3d& ecs) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subExplode(headless::NewEntities& parts) const override;
    void subDescribe(headless::GeometrySink& sink) const override;
    bool forEachPiece(const headless::PieceVisitor& visit) const override;
    std::optional<headless::CurvePiece> pieceAt(double param) const override;

private:
    struct Widths {
        double start;
        double end;
    };

    double bulge(std::size_t index) const { return bulges_.empty() ? 0.0 : bulges_[index]; }
    Widths widths(std::size_t index) const;
    std::size_t next(std::size_t index) const {
        return index + 1 == points_.size() ? 0 : index + 1;
    }
    std::size_t segmentCount() const;
    headless::BulgeSegment segment(std::size_t index) const;
    AcGePoint3d toWorld(const AcGePoint2d& point) const;
    /// The segment in the object coordinate system at height 0, its parameter from 0 to 1.
    headless::CurvePiece flatPiece(std::size_t index) const;
    headless::CurvePiece worldPiece(std::size_t index) const;
    bool isWide() const;
    void ensureWidths();
    /// Reads a group that belongs to the vertex begun last; false for others.
    bool readVertexGroup(const headless::DxfTag& tag);
    void completeLists();
    void writeVertex(headless::DxfOutput& out, std::size_t index) const;

    std::vector<AcGePoint2d> points_;
    // Empty while no vertex has one, as in most drawings; else one per vertex.
    std::vector<double> bulges_;
    std::vector<Widths> widths_;
    std::vector<Adesk::Int32> identifiers_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double elevation_ = 0.0;
    double thickness_ = 0.0;
    double constantWidth_ = 0.0;
    bool closed_ = false;
    bool plinegen_ = false;
};
