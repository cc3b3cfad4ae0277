// Choosing layers by picking entities, one after another.
//
// The layers chosen so far are highlighted, also where block references show them. Locked layers
// can be picked: they are unlocked meanwhile. Whichever way a call ends, the drawing is as it was.
#pragma once

#include <afxwin.h>

namespace kelmor {

/// Lets the user add layers to a list, until Enter; a pick with Shift takes a chosen layer out.
///
/// @param prompt    shown before each pick.
/// @param layers    names joined by ",", those chosen already; then all that are chosen. Stays as
///                  it was unless the call answers 1.
/// @param descend   not 0: a pick on a block reference means the layer of what is there inside.
/// @param pickMode  what counts inside, see GetEntLayerByPt.
/// @return  1 when the user ended it after adding a layer. 0 after Escape, and when no layer was
///          added: taking layers out alone is no choice.
AFX_EXT_API int PickLayerByDwg(const CString& prompt, CString& layers, int descend, int pickMode);

/// The same with one pick: the list becomes that layer alone, chosen already or not.
/// @return  1 when a layer was picked.
AFX_EXT_API int PickOneEntLayerByDwg(const CString& prompt, CString& layers, int descend,
                                     int pickMode);

/// As the first, and tells of the entity whose pick added a layer last: itself, not what was met
/// inside it.
/// @param color          colour index.
/// @param linetype       name of its linetype.
/// @param linetypeScale  its own.
/// @param width          constant width of a lightweight polyline, rounded; unchanged for others.
AFX_EXT_API int PickLayerByDwg(const CString& prompt, CString& layers, int descend, int& color,
                               CString& linetype, double& linetypeScale, int& width, int pickMode);

} // namespace kelmor
