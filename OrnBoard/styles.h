// The component styles of a drawing: listed, loaded from a file, saved to one.
#pragma once

#include <afxwin.h>

#include "component/component_info.h"

class AcDbDatabase;

namespace board {

struct StyleList {
    bool fromDrawing = false; ///< Else they are those of the product's defaults file.
    ComponentMap styles;
};

/// The styles that the current drawing is drawn with.
AFX_EXT_API StyleList listStyles();

struct StyleTransfer {
    int count = 0;
    CString problem = {}; ///< Empty when it was done.
};

/// Puts the styles of a JSON file in the place of those that a drawing carries. A file without
/// styles changes nothing and is a problem.
///
/// @param path  empty: the product's defaults file.
/// @param db    null is a problem.
AFX_EXT_API StyleTransfer loadStyles(AcDbDatabase* db, const CString& path);

/// Writes the styles that the current drawing carries to a JSON file, whose name must end so. A
/// drawing without any, and a file that cannot be written, are problems.
AFX_EXT_API StyleTransfer saveStyles(const CString& path);

} // namespace board
