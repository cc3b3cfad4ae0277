// Blocks made of a drawing's entities, and references to them.
#pragma once

#include <vector>

#include <afxwin.h>
#include <dbmain.h>
#include <gepnt3d.h>

namespace board {

/// What a block is made of: entities of model space.
struct BlockRequest {
    CString name = {};
    std::vector<CString> layers = {};  ///< Of these layers, in any case.
    std::vector<CString> handles = {}; ///< Besides, those with these handles.
    AcGePoint3d base = {};
    bool replace = false; ///< The entities are erased, and a reference stands in their place.
    CString layer = L"0"; ///< Of that reference; made when it is missing.
};

struct BlockMade {
    int entities = 0;
    AcDbHandle reference = {}; ///< Null unless the entities were replaced.
    CString problem = {};      ///< Empty when it was done.
};

/// Problems are a name that is taken or not allowed, a handle that is no entity of model space, and
/// that nothing is chosen. Nothing was changed then.
AFX_EXT_API BlockMade makeBlock(AcDbDatabase* db, const BlockRequest& request);

struct InsertRequest {
    CString name = {};
    AcGePoint3d position = {};
    CString layer = L"0"; ///< Made when it is missing.
};

struct BlockInserted {
    AcDbHandle reference = {};
    CString problem = {}; ///< Empty when it was done.
};

/// Puts a reference into the current space. A missing block, and a layout, are problems.
AFX_EXT_API BlockInserted insertBlock(AcDbDatabase* db, const InsertRequest& request);

} // namespace board
