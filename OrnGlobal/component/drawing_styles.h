// The component styles that a drawing carries itself: records in a dictionary of its own below the
// drawing's root dictionary. Inside the library and its neighbours only. Nothing is thrown.
#pragma once

#include "component/component_info.h"

class AcDbDatabase;

namespace component {

/// The styles of the working database; empty when it carries none. What is no record is passed
/// over.
[[nodiscard]] AFX_EXT_API ComponentMap drawingStyles();

/// Puts the styles in the place of those that the drawing has. Of keys that differ in case only the
/// last stays, as dictionaries do not tell them apart. What the host refuses is left out.
/// @param db  null: the working database.
void storeStyles(const ComponentMap& styles, AcDbDatabase* db);

} // namespace component
