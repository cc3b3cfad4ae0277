// Drawing helpers that the product's modules share: adding entities and layers, and measuring
// points and outlines.
//
// Lengths are in drawing units (mm), angles in radians counter-clockwise from the x axis.
#pragma once

#include <adsdef.h>
#include <afxwin.h>
#include <dbid.h>
#include <dbidar.h>
#include <gepnt3d.h>
#include <gept3dar.h>

class AcDbDatabase;
class AcDbEntity;
class AcDbExtents;
class AcDbPolyline;
struct resbuf;
struct TextInfo;

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

    /// Appends a line to the current space of a database.
    ///
    /// @param layer  null: the drawing's current one.
    /// @param xdata  the line's extended data; null: none. Stays the caller's.
    /// @param db     null: the working database.
    /// @return       the line's id; null when it or its data was refused.
    static AcDbObjectId AddLine(const AcGePoint3d& start, const AcGePoint3d& end,
                                const AcDbObjectId& layer, resbuf* xdata, AcDbDatabase* db);

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

    /// Direction from one point to another in the x, y plane, from 0 to below a whole turn, 0 for
    /// points at one place.
    /// @param inRadians  0: the angle is in degrees.
    static double GetAngle(const AcGePoint3d& start, const AcGePoint3d& end, int inRadians);
    /// Where two segments meet in the x, y plane, ends included, and places where they come as near
    /// as CZelMath::kTolerance.
    ///
    /// @param out  the meeting that comes first on the first segment, at that segment's height;
    ///             untouched when there is none.
    /// @return     the number of meetings: 0, 1, or 2 for the ends of a common stretch.
    static int GetLineInterSect(const AcGePoint3d& start1, const AcGePoint3d& end1,
                                const AcGePoint3d& start2, const AcGePoint3d& end2,
                                AcGePoint3d& out);
    /// Length of the base line of a drawn single-line text, in drawing units, never negative.
    static double GetTextWidth(const CString& text, const TextInfo& info);

    /// Distance of two points in space.
    static double GetLength(const AcGePoint3d& a, const AcGePoint3d& b);
    static AcGePoint3d GetLineMidPoint(const AcGePoint3d& a, const AcGePoint3d& b);
    /// Foot of the perpendicular in space from a point onto the line through two others; their
    /// common place when they coincide.
    static AcGePoint3d GetUprightPoint(const AcGePoint3d& point, const AcGePoint3d& lineStart,
                                       const AcGePoint3d& lineEnd);
    /// Moves the point in the x, y plane by a distance in a direction, and returns it.
    static AcGePoint3d MovePtTo(AcGePoint3d& point, double distance, double angle);
    /// The point turned about another in the x, y plane, at its own height.
    static AcGePoint3d RotatePoint(const AcGePoint3d& point, const AcGePoint3d& about,
                                   double angle);
    /// From user to world coordinates; the point itself when there is no drawing.
    static AcGePoint3d TransUcs2Wcs(const AcGePoint3d& point);
    /// 1 when the rectangles of two boxes share a point or come as near as `tol`, whatever their
    /// heights; 0 when they do not, or one is empty.
    static int GetInterSect(const AcDbExtents& a, const AcDbExtents& b, double tol);

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

    /// The entities of a selection set in its order; none for what is no set.
    static AcDbObjectIdArray GetObjectids(ads_name set);
    /// All entities of the spaces of a drawing, model space and the sheets, in their order there;
    /// of the working database for null.
    static AcDbObjectIdArray GetDatabaseEntitys(AcDbDatabase* db);
    /// Erases the entities, also those on locked layers, and takes them out of the array; what the
    /// host refuses stays in it.
    static void ClearEntity(AcDbObjectIdArray& ids);
    /// Makes the host show what the drawing has become.
    static void UpdateDisplay();

    /// All entities of the groups that an entity is in, each once, in the groups' order; none when
    /// it cannot be opened.
    static AcDbObjectIdArray GetGroupEntIdsFromOneEntity(const AcDbObjectId& id);
    /// Makes the entities draw after all others of their blocks, keeping their order among
    /// themselves; those that cannot be opened are left out. The first refusal.
    static Acad::ErrorStatus SendEntsToTop(AcDbObjectIdArray& ids);
};
