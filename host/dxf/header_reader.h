// Reads a drawing's header variables.
#pragma once

#include "dxf/context.h"

namespace headless {

/// Keeps the variables among the groups (9, then the values) in the database, and takes version,
/// code page and the next free handle from them. Broken files have such groups in other places than
/// the header section, too.
void readHeaderVariables(ReadContext& context, std::span<const DxfTag> groups);

} // namespace headless
