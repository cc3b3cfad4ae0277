#include "layerpick/hatch_loops.h"

#include <cmath>

#include <gearc2d.h>
#include <gelnsg2d.h>

namespace layerpick {
namespace {

void addVertex(AcDbPolyline& loop, const AcGePoint2d& point, double bulge) {
    loop.addVertexAt(loop.numVerts(), point, bulge);
}

void addLine(AcDbPolyline& loop, const AcGeLineSeg2d& line) {
    addVertex(loop, line.startPoint(), 0.0);
}

void addArc(AcDbPolyline& loop, const AcGeCircArc2d& arc) {
    // In two halves, as a bulge cannot tell a whole circle.
    const double from = arc.startAng();
    const double half = (arc.endAng() - from) / 2.0;
    const double bulge = std::tan(half / 4.0) * (arc.isClockWise() ? -1.0 : 1.0);
    addVertex(loop, arc.evalPoint(from), bulge);
    addVertex(loop, arc.evalPoint(from + half), bulge);
}

/// Any other curve as chords.
void addChords(AcDbPolyline& loop, const AcGeCurve2d& curve) {
    AcGeInterval range;
    curve.getInterval(range);
    const double low = range.lowerBound();
    const double high = range.upperBound();
    constexpr double kStray = 1e-4;
    AcGePoint2dArray points;
    AcGeDoubleArray params;
    curve.getSamplePoints(low, high, kStray * curve.length(low, high), points, params);
    for (int i = 0; i + 1 < points.length(); ++i)
        addVertex(loop, points[i], 0.0);
}

void addEdges(AcDbPolyline& loop, const AcDbHatch& hatch, int index) {
    Adesk::Int32 type = 0;
    AcGeVoidPointerArray edges;
    AcGeIntArray kinds;
    if (hatch.getLoopAt(index, type, edges, kinds) != Acad::eOk) return;
    for (int i = 0; i < edges.length(); ++i) {
        const std::unique_ptr<AcGeCurve2d> curve(static_cast<AcGeCurve2d*>(edges[i]));
        if (kinds[i] == AcDbHatch::kLine)
            addLine(loop, static_cast<const AcGeLineSeg2d&>(*curve));
        else if (kinds[i] == AcDbHatch::kCirArc)
            addArc(loop, static_cast<const AcGeCircArc2d&>(*curve));
        else
            addChords(loop, *curve);
    }
}

void addVertices(AcDbPolyline& loop, const AcDbHatch& hatch, int index) {
    Adesk::Int32 type = 0;
    AcGePoint2dArray vertices;
    AcGeDoubleArray bulges;
    if (hatch.getLoopAt(index, type, vertices, bulges) != Acad::eOk) return;
    for (int i = 0; i < vertices.length(); ++i)
        addVertex(loop, vertices[i], bulges[i]);
}

} // namespace

std::vector<std::unique_ptr<AcDbPolyline>> loopsOf(const AcDbHatch& hatch) {
    std::vector<std::unique_ptr<AcDbPolyline>> loops;
    for (int i = 0; i < hatch.numLoops(); ++i) {
        auto loop = std::make_unique<AcDbPolyline>();
        if ((hatch.loopTypeAt(i) & AcDbHatch::kPolyline) != 0)
            addVertices(*loop, hatch, i);
        else
            addEdges(*loop, hatch, i);
        if (loop->numVerts() < 2) continue;
        loop->setClosed(Adesk::kTrue);
        loop->setNormal(hatch.normal());
        loop->setElevation(hatch.elevation());
        loops.push_back(std::move(loop));
    }
    return loops;
}

} // namespace layerpick
