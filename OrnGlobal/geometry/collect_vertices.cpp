// AcUtDb: the vertices of all kinds of polylines and meshes.
#include <memory>

#include <dbents.h>
#include <dbpl.h>

#include "frame/ac_ut_db.h"
#include "frame/object_handle.h"

namespace {

/// Visits the parts of one class. Those of a resident owner are opened by their ids, the others are
/// at hand.
template <class Part, class Owner, class Visit>
void forEachPart(const Owner& owner, Visit visit) {
    const std::unique_ptr<AcDbObjectIterator> parts(owner.vertexIterator());
    if (parts == nullptr) return;
    for (parts->start(); !parts->done(); parts->step()) {
        const AcDbObjectId id = parts->objectId();
        if (id.isNull()) {
            if (const Part* part = Part::cast(parts->entity())) visit(*part);
        } else if (const ReadHandle<Part> part(id); part) {
            visit(*part);
        }
    }
}

} // namespace

void AcUtDb::collectVertices(const AcDbPolyline* polyline, AcGePoint3dArray& pts,
                             AcGeDoubleArray& bulges) {
    if (polyline == nullptr) return;
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        AcGePoint3d point;
        double bulge = 0.0;
        polyline->getPointAt(i, point);
        polyline->getBulgeAt(i, bulge);
        pts.append(point);
        bulges.append(bulge);
    }
}

void AcUtDb::collectVertices(const AcDb2dPolyline* polyline, AcGePoint3dArray& pts,
                             AcGeDoubleArray& bulges) {
    AcArray<AcDb::Vertex2dType> types;
    AcGeDoubleArray startWidths;
    AcGeDoubleArray endWidths;
    collectVertices(polyline, pts, types, bulges, startWidths, endWidths);
}

void AcUtDb::collectVertices(const AcDb2dPolyline* polyline, AcGePoint3dArray& pts,
                             AcArray<AcDb::Vertex2dType>& types, AcGeDoubleArray& bulges,
                             AcGeDoubleArray& startWidths, AcGeDoubleArray& endWidths) {
    if (polyline == nullptr) return;
    forEachPart<AcDb2dVertex>(*polyline, [&](const AcDb2dVertex& vertex) {
        pts.append(polyline->vertexPosition(vertex));
        types.append(vertex.vertexType());
        bulges.append(vertex.bulge());
        startWidths.append(vertex.startWidth());
        endWidths.append(vertex.endWidth());
    });
}

void AcUtDb::collectVertices(const AcDb3dPolyline* polyline, AcGePoint3dArray& pts) {
    if (polyline == nullptr) return;
    forEachPart<AcDb3dPolylineVertex>(
        *polyline, [&](const AcDb3dPolylineVertex& vertex) { pts.append(vertex.position()); });
}

void AcUtDb::collectVertices(const AcDbPolyFaceMesh* mesh, AcDbObjectIdArray& ids,
                             AcGePoint3dArray& pts) {
    if (mesh == nullptr) return;
    forEachPart<AcDbPolyFaceMeshVertex>(*mesh, [&](const AcDbPolyFaceMeshVertex& vertex) {
        ids.append(vertex.objectId());
        pts.append(vertex.position());
    });
}

void AcUtDb::collectVertices(const AcDbPolygonMesh* mesh, AcGePoint3dArray& pts, int& mCount,
                             int& nCount) {
    if (mesh == nullptr) return;
    mCount = mesh->mSize();
    nCount = mesh->nSize();
    forEachPart<AcDbPolygonMeshVertex>(
        *mesh, [&](const AcDbPolygonMeshVertex& vertex) { pts.append(vertex.position()); });
}

bool AcUtDb::plineHasWidth(const AcDbPolyline* polyline) {
    if (polyline == nullptr) return false;
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        double start = 0.0;
        double end = 0.0;
        if (polyline->getWidthsAt(i, start, end) != Acad::eOk) continue;
        if (start > 0.0 || end > 0.0) return true;
    }
    return false;
}

bool AcUtDb::plineHasWidth(const AcDb2dPolyline* polyline) {
    if (polyline == nullptr) return false;
    bool wide = false;
    forEachPart<AcDb2dVertex>(*polyline, [&](const AcDb2dVertex& vertex) {
        wide = wide || vertex.startWidth() > 0.0 || vertex.endWidth() > 0.0;
    });
    return wide;
}

bool AcUtDb::plineHasZeroLengthSegments(const AcDbPolyline* polyline) {
    for (int i = 0; i < numSegments(polyline); ++i) {
        const AcDbPolyline::SegType type = polyline->segType(static_cast<unsigned int>(i));
        if (type == AcDbPolyline::kCoincident || type == AcDbPolyline::kPoint ||
            type == AcDbPolyline::kEmpty)
            return true;
    }
    return false;
}

int AcUtDb::numSegments(const AcDbPolyline* polyline) {
    if (polyline == nullptr || polyline->numVerts() == 0) return 0;
    const int vertices = static_cast<int>(polyline->numVerts());
    return polyline->isClosed() ? vertices : vertices - 1;
}
