// A measurement as a table for people, and as JSON or CSV for programs; all in UTF-8.
#pragma once

#include <ostream>

#include "OrnBoard/measure.h"

namespace orn {

void printTable(std::ostream& out, const board::Measurement& measurement);

/// Arrays `polylines`, `circles` and `layers`, and `coefficient_of_variation` in percent. What
/// cannot be measured is null.
void printJson(std::ostream& out, const board::Measurement& measurement);

/// One line an outline: kind,handle,layer,closed,vertices,area_m2,length.
void printCsv(std::ostream& out, const board::Measurement& measurement);

} // namespace orn
