// Sets of layer names.
#pragma once

#include <set>

#include <afxwin.h>

class AcDbDatabase;

namespace kelmor {

/// Adds the names of the layers that are off or frozen; null: of the working database.
AFX_EXT_API void GetAllHideLayerByDwg(std::set<CString>& names, AcDbDatabase* db);

} // namespace kelmor
