// Finds the layers under points of a drawing.
#pragma once

#include <vector>

#include <afxwin.h>
#include <dbmain.h>
#include <gepnt3d.h>

namespace board {

struct PickOptions {
    bool descend = true;  // Look inside block references,
    int kinds = 0;        // there at 0 all, 1 curves and multilines, 2 texts,
    bool hatches = false; // and at the areas of hatches when nothing else was hit.
};

struct Pick {
    AcGePoint3d at; // user coordinates
    CString layer;  // empty: nothing there
};

/// Picks at each point with the pick box of the current view. What is on hidden layers inside
/// references is passed over.
///
/// @param db  the working database; null picks nothing.
AFX_EXT_API std::vector<Pick> pickLayers(AcDbDatabase* db, const std::vector<AcGePoint3d>& points,
                                         const PickOptions& options);

/// The picks as the table that people read, a line each.
AFX_EXT_API CString pickReport(const std::vector<Pick>& picks);

} // namespace board
