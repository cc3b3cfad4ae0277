// The search for what a pick hits inside a block reference.
#pragma once

#include <set>
#include <vector>

#include <afxwin.h>
#include <dbents.h>

#include "layerpick/pick_spot.h"

namespace layerpick {

/// Which kinds of entities may be hit inside references.
enum class PickMode { everything = 0, curves = 1, texts = 2 };

struct SearchRules {
    const std::set<CString>& excluded;
    PickMode mode = PickMode::everything;
    bool hatches = false; // Areas of hatches count when nothing else was hit.
};

/// The layer of what the spot hits inside a reference; empty when it hits nothing.
///
/// Entities are tried in the block's order, then the reference's attributes, then nested
/// references, then hatches, of which the smallest loop around the spot wins. Nothing is hit deeper
/// than 500 references, or beyond ten million entities looked at.
/// @param reference    open for reading.
/// @param parentLayer  effective layer of the reference that holds this one; empty at the top.
/// @param spot         in the coordinates that the reference stands in.
[[nodiscard]] CString layerInside(const AcDbBlockReference& reference, const CString& parentLayer,
                                  const PickSpot& spot, const SearchRules& rules);

} // namespace layerpick
