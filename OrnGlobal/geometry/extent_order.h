// The order in which boards are read: by rows or by columns of their extents.
//
// Rows go by y and columns by x, with a tolerance of 0.1 drawing units. Two extents stand in one
// row when an edge is level, when one lies within the height of the other, or when they overlap by
// more than half of each; columns likewise.
#pragma once

#include <afxwin.h>
#include <dbents.h>
#include <dbid.h>

AFX_EXT_API bool ExtLineEqual(const AcDbExtents& a, const AcDbExtents& b);
AFX_EXT_API bool ExtColumnEqual(const AcDbExtents& a, const AcDbExtents& b);
/// Rows come top first: true when a's top is above b's. False for equal bottoms and tops.
AFX_EXT_API bool ExtLineLess(const AcDbExtents& a, const AcDbExtents& b);
/// Columns come left first, as told by the right edges: true when b's is to the right of a's. False
/// for equal left and right edges.
AFX_EXT_API bool ExtColumnLess(const AcDbExtents& a, const AcDbExtents& b);

/// Sorts ids of entities by their extents. An id that cannot be opened has empty extents.
///
/// Only the two entities at hand are compared and no groups are formed first, so outlines that
/// overlap in a chain may compare inconsistently: callers know it, and sort them with
/// std::stable_sort, which bears that.
class AFX_EXT_CLASS SortPline {
public:
    /// 0 columns from the left, each from the bottom; 1 the same from the top; 2 rows from the
    /// bottom, each from the left; 3 rows from the top, each from the left. Any other value makes
    /// every comparison false. One for all objects.
    static int nSortMethod;

    bool operator()(const AcDbObjectId& id1, const AcDbObjectId& id2) const;
};

/// Notes an entity's extents: SortPline asks for those of long lists over and over. They are taken
/// as they are until InitExtentLess().
AFX_EXT_API void NoteExtentLess(const AcDbObjectId& id);
/// Forgets all extents that were noted.
AFX_EXT_API void InitExtentLess();
