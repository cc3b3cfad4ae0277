// Polylines as the straight lines between their corners.
#pragma once

#include <vector>

#include <dbmain.h>

#include "table/ruling.h"

namespace table {

/// A line for each piece of a polyline, arcs as their chords; none for other entities.
/// @param entity  open for reading.
[[nodiscard]] std::vector<Ruling> straightPieces(const AcDbEntity& entity);

} // namespace table
