// Readers of single database objects: their names between sessions and calls, the vertices of all
// kinds of polylines and meshes, and what texts say.
//
// Pointers are open for reading and stay the caller's; an id is opened for the length of the call.
#pragma once

#include <acarray.h>
#include <adslib.h>
#include <afxwin.h>
#include <dbents.h>
#include <dbidar.h>
#include <gedblar.h>
#include <gept3dar.h>

class AcDbDatabase;
class AcDbMText;
class AcDbPolyline;
class AcDbText;

class AFX_EXT_CLASS AcUtDb {
public:
    // Ids, entity names and handles.

    static Acad::ErrorStatus objIdToEname(const AcDbObjectId& id, ads_name ename);
    /// A failure is reported on the command line.
    static Acad::ErrorStatus enameToObjId(ads_name ename, AcDbObjectId& id);
    /// The object with a hexadecimal handle; eInvalidInput when the database has none, reported on
    /// the command line when `speak`. A null database means the working one.
    static Acad::ErrorStatus handleStrToObjId(AcDbDatabase* db, const wchar_t* handle,
                                              AcDbObjectId& id, bool speak);
    /// Writes the object's handle into `str`, which is empty when it cannot be opened.
    /// @return  the characters of `str`.
    static const wchar_t* objIdToHandleStr(const AcDbObjectId& id, CString& str);

    // Copies.

    /// Appends copies of entities to a block, moved by a transform if one is given, and their ids
    /// to `clones`. Those that cannot be opened, copied or moved are left out.
    /// @param owner  the block, in the entities' own database.
    /// @return       the first refusal.
    static Acad::ErrorStatus cloneObjects(const AcDbObjectIdArray& ids, const AcDbObjectId& owner,
                                          AcDbObjectIdArray& clones);
    static Acad::ErrorStatus cloneAndXformObjects(const AcDbObjectIdArray& ids,
                                                  const AcDbObjectId& owner,
                                                  const AcGeMatrix3d& transform,
                                                  AcDbObjectIdArray& clones);

    // Vertices. All forms append, in the order of the entity, in world coordinates; null has none.

    static void collectVertices(const AcDbPolyline* polyline, AcGePoint3dArray& pts,
                                AcGeDoubleArray& bulges);
    /// With the control points of a smoothed polyline.
    static void collectVertices(const AcDb2dPolyline* polyline, AcGePoint3dArray& pts,
                                AcGeDoubleArray& bulges);
    static void collectVertices(const AcDb2dPolyline* polyline, AcGePoint3dArray& pts,
                                AcArray<AcDb::Vertex2dType>& types, AcGeDoubleArray& bulges,
                                AcGeDoubleArray& startWidths, AcGeDoubleArray& endWidths);
    static void collectVertices(const AcDb3dPolyline* polyline, AcGePoint3dArray& pts);
    /// The corner points alone, not the faces over them.
    static void collectVertices(const AcDbPolyFaceMesh* mesh, AcDbObjectIdArray& ids,
                                AcGePoint3dArray& pts);
    /// The M and N counts are set, not added to; untouched for null.
    static void collectVertices(const AcDbPolygonMesh* mesh, AcGePoint3dArray& pts, int& mCount,
                                int& nCount);

    /// True when a segment begins or ends wider than 0.
    static bool plineHasWidth(const AcDbPolyline* polyline);
    static bool plineHasWidth(const AcDb2dPolyline* polyline);
    static bool plineHasZeroLengthSegments(const AcDbPolyline* polyline);
    /// Segments of a polyline with the closing one when it is closed.
    static int numSegments(const AcDbPolyline* polyline);

    // Drawing texts.

    /// The text with "%%" before every character whose code is above `low` and below `high`.
    static CString convertAcDbTextString(const wchar_t* text, int low, int high);
    /// What a single-line text or an MText says, with such marks before characters 128 to 205.
    /// Fields are turned into plain text where the entity may be written. Empty for null and for an
    /// id that is no such text.
    static CString getTextString(AcDbText* text);
    static CString getTextString(const AcDbObjectId& id);
    static CString getMTextContents(AcDbMText* text);
    static CString getMTextContents(const AcDbObjectId& id);
    /// An MText's text without formatting codes.
    static CString GetMTextData(AcDbMText* text);
};
