#include "board_outline.h"

#include <memory>
#include <numbers>

#include <dbents.h>
#include <dbpl.h>
#include <gemat3d.h>

#include "frame/ac_ut_db.h"
#include "geometry/line_tools.h"

namespace board {
namespace {

constexpr double kSquareMillimetresPerSquareMetre = 1e6;

std::optional<double> areaOf(const AcDbCurve& curve) {
    double area = 0.0;
    if (curve.getArea(area) != Acad::eOk) return std::nullopt;
    return area / kSquareMillimetresPerSquareMetre;
}

std::optional<double> lengthOf(const AcDbCurve& curve) {
    double endParam = 0.0;
    double length = 0.0;
    if (curve.getEndParam(endParam) != Acad::eOk) return std::nullopt;
    if (curve.getDistAtParam(endParam, length) != Acad::eOk) return std::nullopt;
    return length;
}

// Old-style polylines keep their vertices, a mesh also its faces, as parts of their own.
template <class Owner>
int countParts(const Owner& owner) {
    int count = 0;
    const std::unique_ptr<AcDbObjectIterator> part(owner.vertexIterator());
    for (part->start(); !part->done(); part->step())
        ++count;
    return count;
}

Outline flatOutline(const AcDbCurve& curve, int vertices) {
    return {.closed = curve.isClosed(),
            .vertices = vertices,
            .areaSquareMetre = areaOf(curve),
            .length = lengthOf(curve)};
}

Outline circleOutline(const AcDbCircle& circle) {
    Outline outline = flatOutline(circle, 0);
    outline.kind = Outline::Kind::kCircle;
    return outline;
}

Outline spaceOutline(const AcDb3dPolyline& polyline) {
    return {.closed = polyline.isClosed(),
            .vertices = countParts(polyline),
            .areaSquareMetre = std::nullopt,
            .length = lengthOf(polyline)};
}

template <class Mesh>
Outline meshOutline(const Mesh& mesh) {
    Outline outline;
    outline.vertices = countParts(mesh);
    return outline;
}

std::optional<Sides> cornerSides(AcDbPolyline& polyline) {
    const AcGePoint3dArray corners = LineTools::GetPlineOutTangant(&polyline);
    if (corners.length() < 4) return std::nullopt;
    return Sides{corners[0].distanceTo(corners[1]), corners[1].distanceTo(corners[2])};
}

// Outer tangents are found on lightweight polylines: an old-style one is measured as the
// lightweight one through the same vertices, which lie in the plane of its normal as its bulges do.
std::optional<Sides> cornerSides(const AcDb2dPolyline& polyline) {
    AcGePoint3dArray points;
    AcGeDoubleArray bulges;
    AcUtDb::collectVertices(&polyline, points, bulges);
    AcGeMatrix3d toPlane;
    polyline.getEcs(toPlane);
    toPlane.invert();

    AcDbPolyline outline(static_cast<unsigned int>(points.length()));
    for (int i = 0; i < points.length(); ++i) {
        const AcGePoint3d vertex = toPlane * points[i];
        outline.addVertexAt(static_cast<unsigned int>(i), {vertex.x, vertex.y}, bulges[i]);
    }
    outline.setClosed(true);
    return cornerSides(outline);
}

} // namespace

std::optional<Outline> outlineOf(const AcDbEntity& entity) {
    if (const auto* polyline = AcDbPolyline::cast(&entity))
        return flatOutline(*polyline, static_cast<int>(polyline->numVerts()));
    if (const auto* circle = AcDbCircle::cast(&entity)) return circleOutline(*circle);
    if (const auto* polyline = AcDb2dPolyline::cast(&entity))
        return flatOutline(*polyline, countParts(*polyline));
    if (const auto* polyline = AcDb3dPolyline::cast(&entity)) return spaceOutline(*polyline);
    if (const auto* mesh = AcDbPolygonMesh::cast(&entity)) return meshOutline(*mesh);
    if (const auto* mesh = AcDbPolyFaceMesh::cast(&entity)) return meshOutline(*mesh);
    return std::nullopt;
}

std::optional<Sides> sidesOf(const AcDbEntity& entity) {
    if (const auto* circle = AcDbCircle::cast(&entity))
        return Sides{2.0 * circle->radius(), 2.0 * circle->radius()};
    if (auto* polyline = AcDbPolyline::cast(&entity); polyline != nullptr && polyline->isClosed())
        return cornerSides(*polyline);
    if (const auto* polyline = AcDb2dPolyline::cast(&entity);
        polyline != nullptr && polyline->isClosed())
        return cornerSides(*polyline);
    return std::nullopt;
}

} // namespace board
