// Polylines: their vertices, direction, inside and outside, lengths, and what they meet.
//
// A polyline comes open for reading, or as an id that is opened for the length of the call; an id
// that cannot be opened or is of another kind gives the empty result (no points, false, 0, the
// origin), silently. Points are world coordinates in the polyline's plane, and only x and y take
// part in tests. Bulges are tan(sweep / 4), positive counter-clockwise; angles are radians.
#pragma once

#include <vector>

#include <adslib.h>
#include <afxtempl.h>
#include <afxwin.h>
#include <dbidar.h>
#include <gept3dar.h>

#include "OrnCore/arc_line.h"

class AcDbPolyline;

namespace LineTools {

// Points and angles.

/// 1 when the angles differ by a quarter or three quarters of a circle within `tol`, excluding it;
/// else 0. The angles are not brought into one turn first.
AFX_EXT_API int AngleVertical(double a1, double a2, double tol);
/// True when a point of the list is nearer to `pt` than `tol`.
AFX_EXT_API bool FindPoint(const AcGePoint3d& pt, const AcGePoint3dArray& pts, double tol);
/// True for counter-clockwise order. Differences of coordinates count in whole drawing units, so
/// that outlines smaller than one unit are neither way round.
AFX_EXT_API bool IsClockWise(const AcGePoint3dArray& pts);
/// Reverses the points unless the middle of the first and third lies to the right of the way from
/// the first to the second, by more than one unit: a convex outline comes out clockwise.
/// @param pts  at least three points.
AFX_EXT_API void GetClockWisePtary(AcGePoint3dArray& pts);
/// Size of the bulge of an arc about a centre, the smaller of the two between the points. 0 when
/// they coincide.
AFX_EXT_API double GetBulgeFromTwoPointAndCenter(const AcGePoint3d& p1, const AcGePoint3d& p2,
                                                 const AcGePoint3d& center);

// Vertices.

AFX_EXT_API bool PlineHasArc(const AcDbObjectId& id);
AFX_EXT_API AcGePoint3dArray GetPlineVerts(const AcDbObjectId& id);
/// Appends every vertex's bulge.
AFX_EXT_API void GetPlineBugel(const AcDbObjectId& id, CArray<double, double>& bulges);
/// Appends every vertex and its bulge.
AFX_EXT_API void GetPtsAndBulges(AcDbPolyline* pl, AcGePoint3dArray& pts,
                                 CArray<double, double>& bulges);
/// Gives the polyline the points for vertices, in its own plane; a vertex without a bulge in the
/// list gets 0. Vertices are added at the front, or every other one is removed from the front on;
/// those that stay keep their widths.
AFX_EXT_API void SetPlineBugelAndVerts(const AcDbObjectId& id, const CArray<double, double>& bulges,
                                       const AcGePoint3dArray& pts);
/// The vertices as a chain of RTPOINT buffers for prompts and selections, which want no repeated
/// points: vertices equal to the one before, and last ones equal to the first, are left out. Null
/// when there are none; the caller frees it with acutRelRb.
AFX_EXT_API resbuf* ptArrayToResbuf(const AcDbObjectId& id);

// Direction and inside.

/// How many times the polyline turns round counter-clockwise: 1 for a simple counter-clockwise
/// outline, -1 for a clockwise one.
/// @return  false, and `winding` untouched, for a polyline that is neither marked closed nor ends
///          where it starts to three decimals.
AFX_EXT_API int polyWindingNumber(AcDbPolyline* pl, int& winding);
/// A point strictly inside: the first inner one of the middles between every vertex and the next
/// but one. The origin when all of them lie outside, which concave outlines may have.
AFX_EXT_API AcGePoint3d GetPtInPolyLine(AcDbPolyline* pl);

// Lengths.

AFX_EXT_API double GetPlineLength(AcDbPolyline* pl);
AFX_EXT_API double GetPlineLength(const AcDbObjectId& id);

// Tangents and intersections.

/// The corners of the outline's outer tangents: what remains when every corner is sharpened.
/// Straight runs keep their lines, vertices within a straight run are dropped, and an arc bulging
/// outward is replaced by the corner of the tangents at its ends; an arc of nearly half a circle or
/// more by those of its equal parts of at most a quarter. An arc bulging inward is replaced by its
/// chord. The first side is that of the first segment, or begins at its corner when it is an arc;
/// the direction is the polyline's. An open polyline is closed by a straight line.
AFX_EXT_API AcGePoint3dArray GetPlineOutTangant(const AcDbPolyline* pl);
/// Direction of most of the straight pieces by length, in [0, pi): pieces within `tol` radians of
/// each other belong together. 0 without straight pieces.
AFX_EXT_API double FindLinesAngle(const std::vector<ZelArcLine>& lines, double tol);
/// Appends the bulges of the stretch from the place nearest to `from` to the one nearest to `to`,
/// one per piece, arcs cut where it begins and ends. On a closed polyline the stretch runs in its
/// direction, on an open one towards `to`.
AFX_EXT_API void GetSectBulgeFromPline(const AcDbObjectId& id, const AcGePoint3d& from,
                                       const AcGePoint3d& to, CArray<double, double>& bulges);
/// Where a segment meets the closed outline through the points; this and the next two by growing
/// distance from the start, each point once.
AFX_EXT_API AcGePoint3dArray GetInterSectPt(const AcGePoint3d& start, const AcGePoint3d& end,
                                            const AcGePoint3dArray& outline);
/// Where a piece meets lines, arcs, circles and polylines; other entities are passed over.
AFX_EXT_API AcGePoint3dArray GetInterSectPt(const ZelArcLine& line, const AcDbObjectIdArray& ids);
AFX_EXT_API AcGePoint3dArray GetInterSectPt(const ZelArcLine& line,
                                            const std::vector<ZelArcLine>& others);

// Properties.

/// Copies colour, layer, linetype and its scale, lineweight, material, thickness and transparency
/// of a polyline.
AFX_EXT_API void CpoyPLineProperties(const AcDbObjectId& from, const AcDbObjectId& to);
/// Sets a polyline's linetype scale.
AFX_EXT_API void SetLineScale(const AcDbObjectId& id, double scale);
AFX_EXT_API void setVisibility(const AcDbObjectId& id, bool visible);
AFX_EXT_API void setVisibility(const AcDbObjectIdArray& ids, bool visible);
/// The four corners of the entity's box at its lower height, counter-clockwise from the lower left;
/// none for an entity without bounds.
AFX_EXT_API AcGePoint3dArray GetEntExtPtAry(const AcDbObjectId& id);

} // namespace LineTools
