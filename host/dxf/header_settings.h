// The settings of a drawing as the variables of a file's header.
#pragma once

#include "db/database.h"
#include "db/dxf_output.h"

namespace headless {

/// Adds the variables of the settings that differ: for each its name (9) and its values. Variables
/// that files of the output's version do not have are left out.
/// @param before   null adds all.
/// @param isOther  tells whether a table record of the same id counts as another one: its name
///                 changed.
void putSettings(DxfOutput& to, AcDbDatabase& db, const DrawingSettings* before,
                 const std::function<bool(AcDbObjectId)>& isOther);

} // namespace headless
