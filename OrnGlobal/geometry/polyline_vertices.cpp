// LineTools: reading and rewriting the vertices of lightweight polylines, and their length.
#include <algorithm>

#include <dbpl.h>

#include "OrnCore/polyline_segments.h"
#include "frame/object_handle.h"
#include "geometry/line_tools.h"

namespace {

AcGePoint3dArray pointsOf(const AcDbPolyline& polyline) {
    AcGePoint3dArray points;
    const unsigned int count = polyline.numVerts();
    points.setLogicalLength(static_cast<int>(count));
    for (unsigned int i = 0; i < count; ++i)
        polyline.getPointAt(i, points[static_cast<int>(i)]);
    return points;
}

void appendBulges(const AcDbPolyline& polyline, CArray<double, double>& bulges) {
    const unsigned int count = polyline.numVerts();
    for (unsigned int i = 0; i < count; ++i) {
        double bulge = 0.0;
        polyline.getBulgeAt(i, bulge);
        bulges.Add(bulge);
    }
}

/// Adds vertices at the front, or removes every other one from the front on; those that stay keep
/// their widths. Every point and bulge is overwritten afterwards.
void resize(AcDbPolyline& polyline, int count) {
    const int missing = count - static_cast<int>(polyline.numVerts());
    for (int i = 0; i < missing; ++i)
        polyline.addVertexAt(0, AcGePoint2d::kOrigin, 0.0, -1.0, -1.0);
    for (unsigned int i = 0; static_cast<int>(i) < -missing; ++i)
        polyline.removeVertexAt(std::min(i, polyline.numVerts() - 1));
}

double lengthOf(const AcDbPolyline* polyline) {
    double sum = 0.0;
    if (polyline == nullptr) return sum;
    orncore::forEachSegment(
        *polyline, orncore::Closing::kAsDrawn,
        [&sum](const orncore::Segment& segment) { sum += orncore::lengthOf(segment); });
    return sum;
}

} // namespace

bool LineTools::PlineHasArc(const AcDbObjectId& id) {
    const ReadHandle<AcDbPolyline> polyline(id);
    if (!polyline) return false;
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        if (polyline->segType(i) == AcDbPolyline::kArc) return true;
    }
    return false;
}

AcGePoint3dArray LineTools::GetPlineVerts(const AcDbObjectId& id) {
    const ReadHandle<AcDbPolyline> polyline(id);
    return polyline ? pointsOf(*polyline) : AcGePoint3dArray();
}

void LineTools::GetPlineBugel(const AcDbObjectId& id, CArray<double, double>& bulges) {
    if (const ReadHandle<AcDbPolyline> polyline(id); polyline) appendBulges(*polyline, bulges);
}

void LineTools::GetPtsAndBulges(AcDbPolyline* pl, AcGePoint3dArray& pts,
                                CArray<double, double>& bulges) {
    if (pl == nullptr) return;
    pts.append(pointsOf(*pl));
    appendBulges(*pl, bulges);
}

void LineTools::SetPlineBugelAndVerts(const AcDbObjectId& id, const CArray<double, double>& bulges,
                                      const AcGePoint3dArray& pts) {
    const WriteHandle<AcDbPolyline> polyline(id);
    if (!polyline) return;
    resize(*polyline, pts.length());
    for (int i = 0; i < pts.length(); ++i) {
        const auto vertex = static_cast<unsigned int>(i);
        polyline->setBulgeAt(vertex, i < bulges.GetSize() ? bulges[i] : 0.0);
        polyline->setPointAt(vertex, AcGePoint2d(pts[i].x, pts[i].y));
    }
}

resbuf* LineTools::ptArrayToResbuf(const AcDbObjectId& id) {
    AcGePoint3dArray points = GetPlineVerts(id);
    while (points.length() > 1 && points.last() == points.first())
        points.removeLast();

    resbuf* head = nullptr;
    resbuf** tail = &head;
    for (int i = 0; i < points.length(); ++i) {
        if (i > 0 && points[i] == points[i - 1]) continue;
        resbuf* item = acutNewRb(RTPOINT);
        if (item == nullptr) break;
        item->resval.rpoint[0] = points[i].x;
        item->resval.rpoint[1] = points[i].y;
        item->resval.rpoint[2] = points[i].z;
        *tail = item;
        tail = &item->rbnext;
    }
    return head;
}

double LineTools::GetPlineLength(AcDbPolyline* pl) { return lengthOf(pl); }

double LineTools::GetPlineLength(const AcDbObjectId& id) {
    return lengthOf(ReadHandle<AcDbPolyline>(id).get());
}
