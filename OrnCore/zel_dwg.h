// Drawing helpers that the product's modules share: adding entities and layers, and measuring
// points and outlines.
//
// Lengths are in drawing units (mm), angles in radians counter-clockwise from the x axis.
#pragma once

#include <afxwin.h>
#include <dbid.h>
#include <gepnt3d.h>
#include <gept3dar.h>

class AcDbDatabase;
class AcDbEntity;
class AcDbExtents;
class AcDbPolyline;

class AFX_EXT_CLASS CZelDwg {
public:
    /// Appends a new entity to the current space of a database.
    ///
    /// @param ent       not in any database yet; stays the caller's when the call fails.
    /// @param db        null: the working database.
    /// @param keepOpen  not 0: the entity stays open for writing, and the caller closes it; 0: it
    ///                  is closed once it is in the database.
    /// @param report    not 0: a failure is printed on the command line.
    /// @return          the new entity's id, null on failure.
    static AcDbObjectId AddEntity(AcDbEntity* ent, AcDbDatabase* db, int keepOpen, int report);

    /// The layer of a name in the working database, taken as it is; else a new one.
    ///
    /// @param color        the new layer's colour index.
    /// @param linetype     the new layer's linetype; continuous when the drawing has none of that
    ///                     name.
    /// @param makeCurrent  not 0: the layer becomes the drawing's current one.
    /// @return             null when there is no drawing or the host refuses the name.
    static AcDbObjectId AddLayer(const CString& name, int color, const CString& linetype,
                                 int makeCurrent);

    /// The entity's box in world coordinates; empty (its minimum above its maximum) when it cannot
    /// be opened or has no bounds.
    static AcDbExtents GetGeomExtents(const AcDbObjectId& id);

    /// True when all three coordinates are equal after rounding to that many decimal places, halves
    /// away from zero. Negative counts round to tens, hundreds and so on.
    static bool EqualPoint(const AcGePoint3d& a, const AcGePoint3d& b, int decimals);

    /// Distance of two points in space.
    static double GetLength(const AcGePoint3d& a, const AcGePoint3d& b);
    static AcGePoint3d GetLineMidPoint(const AcGePoint3d& a, const AcGePoint3d& b);
    /// Foot of the perpendicular in space from a point onto the line through two others; their
    /// common place when they coincide.
    static AcGePoint3d GetUprightPoint(const AcGePoint3d& point, const AcGePoint3d& lineStart,
                                       const AcGePoint3d& lineEnd);
    /// Moves the point in the x, y plane by a distance in a direction, and returns it.
    static AcGePoint3d MovePtTo(AcGePoint3d& point, double distance, double angle);

    /// Place of a point against a closed polygon in x and y, whose points may run either way,
    /// repeat and lie on one line: -1 outside, 0 no farther than `tol` from an edge, 1 inside.
    /// Parts that the outline encloses twice count as outside. No points enclose nothing: -1.
    static int PtInClosePolygon(const AcGePoint3dArray& points, const AcGePoint3d& point,
                                double tol);
    /// As above; -1 for null.
    static int PtInClosePolygon(const AcGePoint3dArray* points, const AcGePoint3d& point,
                                double tol);
    /// As above for a polyline, exact on its arcs. The point is projected along the polyline's
    /// normal; an open polyline is closed by a straight line. -1 for null.
    /// @param polyline  open for reading.
    static int PtInClosePolygon(const AcDbPolyline* polyline, const AcGePoint3d& point, double tol);

    /// Area enclosed by a polyline with its arcs in square drawing units, never negative; an open
    /// polyline is closed by a straight line. 0 for null.
    /// @param polyline  open for reading.
    static double GetPolylineArea(const AcDbPolyline* polyline);
};
