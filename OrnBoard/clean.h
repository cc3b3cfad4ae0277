// Clears the block definitions that a piece of work added to a drawing and that nothing refers to.
#pragma once

#include <functional>
#include <vector>

#include <afxwin.h>

class AcDbDatabase;

namespace board {

struct BlockCleaning {
    bool marked = true; ///< False: nobody said where the work began.
    std::vector<CString> cleared = {};
    std::vector<CString> kept = {}; ///< Added, too, but still referred to.
};

/// Remembers the drawing's blocks: the work begins here. An earlier mark is forgotten. Nothing for
/// null.
AFX_EXT_API void markBlocks(AcDbDatabase* db);

/// Erases the definitions added since the mark, which is used up.
AFX_EXT_API BlockCleaning clearAddedBlocks(AcDbDatabase* db);

/// Both around the work.
AFX_EXT_API BlockCleaning clearBlocksOf(AcDbDatabase* db, const std::function<void()>& work);

/// The drawing closes: its mark is forgotten.
void forgetMark(AcDbDatabase* db);

/// A line for the blocks cleared and one for those kept, each ending in a line feed.
AFX_EXT_API CString cleaningReport(const BlockCleaning& cleaning);

} // namespace board
