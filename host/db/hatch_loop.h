// The loops of hatches, inside the host.
#pragma once

#include <vector>

#include "db/curve_piece.h"
#include "db/hatch.h"

/// One edge of a boundary, in the object coordinate system at height 0.
struct AcDbHatch::Edge {
    enum Kind { kLine = 1, kCircularArc = 2, kEllipticArc = 3, kSpline = 4 }; // as in files

    explicit Edge(Kind kindOfEdge, headless::CurvePiece placed)
        : kind(kindOfEdge), piece(std::move(placed)) {}

    Kind kind;
    headless::CurvePiece piece; // Arcs run counter-clockwise,
    bool clockwise = false;     // whichever way the boundary does.
    bool periodic = false;
    // What a spline was made from.
    std::vector<AcGePoint2d> fitPoints;
    AcGeVector2d startTangent;
    AcGeVector2d endTangent;

    void transformBy(const AcGeMatrix3d& local);
};

/// One boundary, in the object coordinate system at height 0: a polyline, or edges one after the
/// other.
struct AcDbHatch::Loop {
    Adesk::Int32 type = 0;
    bool closed = true;
    std::vector<AcGePoint2d> vertices;
    std::vector<double> bulges;
    std::vector<Edge> edges;
    std::vector<AcDbObjectId> sources;

    bool isPolyline() const { return (type & kPolyline) != 0; }
    /// The edges, made from the vertices for a polyline.
    std::vector<headless::CurvePiece> pieces() const;
};
