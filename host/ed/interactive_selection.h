// Building a selection by clicks and options, as acedSSGet does when it is told nothing else.
#pragma once

#include <string>

#include "db/database.h"
#include "ed/selection_sets.h"

namespace headless {

class EntityFilter;

/// How the user is asked.
struct SelectionDialogueOptions {
    std::wstring addPrompt = L"\nSelect objects: ";
    std::wstring removePrompt = L"\nRemove objects: ";
    bool single = false;       // The first choice ends it.
    bool refuseLocked = false; // Entities on locked layers are passed over.
};

/// Asks until Enter. A click, or a typed point, takes the newest entity there; where there is none
/// it is the corner of a box, and the next point is the other: from left to right a window, from
/// right to left a crossing one. With Shift held what is found is removed instead. The options
/// are Window, Last, Crossing, ALL, Fence, WPolygon, CPolygon, Add, Remove, Previous and Undo.
///
/// @param chosen  gets the entities in the order they were chosen, each once.
/// @return        RTNORM; RTERROR when nothing was chosen; RTCAN for Escape and when there is no
///                more input.
[[nodiscard]] int chooseEntities(const AcDbDatabase& db, const EntityFilter& filter,
                                 const SelectionDialogueOptions& options, SelectionSet& chosen);

} // namespace headless
