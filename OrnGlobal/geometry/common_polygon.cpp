#include "geometry/common_polygon.h"

#include <algorithm>

#include <dbpl.h>

#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_math.h"
#include "frame/object_handle.h"
#include "geometry/flat_points.h"

namespace {

int decimalsFrom(double tolerance) {
    // More than any coordinate has; a NaN has none.
    constexpr double kMost = 100.0;
    return tolerance >= 0.0 || tolerance < 0.0
               ? static_cast<int>(std::clamp(tolerance, -kMost, kMost))
               : 0;
}

} // namespace

int Common::PtInClosePolygon(const AcGePoint3dArray& pts, const AcGePoint3d& pt, double tol) {
    const int decimals = decimalsFrom(tol);
    const AcGePoint3d flat = geometry::flattened(pt);
    for (int i = 0; i < pts.length(); ++i) {
        if (CZelDwg::EqualPoint(flat, geometry::flattened(pts[i]), decimals)) return 0;
    }
    return CZelDwg::PtInClosePolygon(pts, pt, tol);
}

int Common::PtInClosePolygon(const AcDbPolyline& pl, const AcGePoint3d& pt, double tol) {
    AcGePoint3dArray pts;
    for (unsigned int i = 0; i < pl.numVerts(); ++i) {
        AcGePoint3d vertex;
        pl.getPointAt(i, vertex);
        pts.append(vertex);
    }
    return PtInClosePolygon(pts, pt, tol);
}

int Common::PolyLineIsClose(const AcDbObjectId& id) {
    const ReadHandle<AcDbPolyline> polyline(id);
    if (!polyline) return 0;
    if (polyline->isClosed()) return 1;
    AcGePoint3d start;
    AcGePoint3d end;
    if (polyline->getStartPoint(start) != Acad::eOk || polyline->getEndPoint(end) != Acad::eOk)
        return 0;
    return CZelDwg::EqualPoint(end, start, 1) ? 1 : 0;
}

bool Common::Equal(const CArray<double, double>& a, const CArray<double, double>& b) {
    constexpr double kTolerance = 0.001;
    if (a.GetSize() != b.GetSize()) return false;
    for (INT_PTR i = 0; i < a.GetSize(); ++i) {
        if (CZelMath::EqualTo(a[i], b[i], kTolerance) == 0) return false;
    }
    return true;
}
