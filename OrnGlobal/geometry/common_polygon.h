// Tests of closed outlines that callers of the whole product share.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>
#include <dbid.h>
#include <gepnt3d.h>
#include <gept3dar.h>

class AcDbPolyline;

namespace Common {

/// Place of a point against a closed polygon, as CZelDwg::PtInClosePolygon (-1 outside, 0 on the
/// outline, 1 inside), except that it is also 0 at a vertex: where both are equal after rounding to
/// as many decimal places as `tol` has whole units. Callers pass lengths, so that mostly means
/// whole drawing units.
AFX_EXT_API int PtInClosePolygon(const AcGePoint3dArray& pts, const AcGePoint3d& pt, double tol);
/// As above for a polyline open for reading, its arcs taken as their chords.
AFX_EXT_API int PtInClosePolygon(const AcDbPolyline& pl, const AcGePoint3d& pt, double tol);
/// 1 for a polyline that is marked closed or ends where it starts, to one decimal place; else 0.
AFX_EXT_API int PolyLineIsClose(const AcDbObjectId& id);
/// True for as many numbers that are pairwise equal within 0.001.
AFX_EXT_API bool Equal(const CArray<double, double>& a, const CArray<double, double>& b);

} // namespace Common
