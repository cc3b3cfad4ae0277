// The entities of a drawing by their layers.
#pragma once

#include <map>

#include <afxwin.h>
#include <dbidar.h>

namespace kelmor {

/// Files entities under their layers' names as the layers have them, in the order given, behind
/// what the map holds; those that cannot be opened are left out.
/// @param references  receives the block references among them. The last argument is there for
///                    callers only.
AFX_EXT_API void GetLayerEntAndBlock(const AcDbObjectIdArray& entities,
                                     std::map<CString, AcDbObjectIdArray>& byLayer,
                                     AcDbObjectIdArray& references, int);

/// Erases those of the entities that are on the layer, whose name must match letter for letter, and
/// takes them out of the array; what cannot be erased stays in it.
AFX_EXT_API void ClearLayerEnt(AcDbObjectIdArray& entities, const CString& layer);

} // namespace kelmor
