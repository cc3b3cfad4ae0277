// The parts of blocks that show a layer, as entities that can be highlighted and selected.
#pragma once

#include <map>
#include <vector>

#include <afxwin.h>
#include <dbidar.h>

class AcDbDatabase;

namespace kelmor {

/// 1 when an entity of the block that a reference shows, or of blocks inside it, is itself on one
/// of the layers, named in any case; else 0. The last argument is there for callers only.
AFX_EXT_API int IsBlockInsideUseLayer(const AcDbObjectId& reference,
                                      const std::vector<CString>& layers, int);

/// Makes entities of what a reference shows on a layer, at any depth: copies where the reference
/// shows them, clipped as it is, on that layer. They come into the space that the reference stands
/// in, or into the current one when it stands in a block.
///
/// @param layer  in any case; what is on layer 0 shows the layer of the reference that holds it.
///               The next argument is there for callers only.
/// @param db     the reference's database, null for the working one; none is made for another's,
///               nor of what is more than AcUtBlockReferenceExploder takes.
/// @return       the copies, which the caller erases.
AFX_EXT_API AcDbObjectIdArray CreateBlockSubEntByLayer(const AcDbObjectId& reference,
                                                       const CString& layer, int, AcDbDatabase* db);

/// The same for every reference and layer.
/// @param byLayer    receives the copies under their layers' names, behind what it holds.
/// @param temporary  receives the copies, too. The last argument is there for callers only.
AFX_EXT_API void CreateBlockEntByLayer(const std::vector<CString>& layers,
                                       const AcDbObjectIdArray& references,
                                       std::map<CString, AcDbObjectIdArray>& byLayer,
                                       AcDbObjectIdArray& temporary, int);

} // namespace kelmor
