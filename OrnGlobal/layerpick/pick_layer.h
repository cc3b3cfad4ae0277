// Which layer lies under a point of the drawing, through nested block references too.
#pragma once

#include <set>

#include <afxwin.h>
#include <gepnt3d.h>

class AcDbEntity;

namespace kelmor {

/// The layer of what the pick box around a point holds.
///
/// First comes the newest plain entity, then what lies inside block references, then the newest
/// hatch. An entity on layer 0 inside a reference shows the reference's layer.
/// @param point     in user coordinates. The selection takes it as it is; the search inside
///                  references carries it to the world first.
/// @param excluded  layers, by their exact names, whose entities inside references are passed over.
/// @param descend   not 0: block references are looked into; 0: they are plain entities.
/// @param pickMode  inside references 1 only looks at curves, multilines and references, 2 only at
///                  texts; anything else at all kinds.
/// @param hatches   not 0: areas of hatches inside references count when nothing else was hit.
/// @return          empty when nothing was hit.
AFX_EXT_API CString GetEntLayerByPt(const AcGePoint3d& point, const std::set<CString>& excluded,
                                    int descend, int pickMode, int hatches);

/// The layer of what lies under a point inside one block reference, nested ones included. What a
/// clip hides of a reference is not hit.
/// @param reference  open for reading; the result is empty for null and other entities.
/// Other parameters as above.
AFX_EXT_API CString GetBlockInsideLayerByPt(const AcDbEntity* reference, const AcGePoint3d& point,
                                            const std::set<CString>& excluded, int pickMode,
                                            int hatches);

} // namespace kelmor
