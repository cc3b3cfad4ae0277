// The nine symbol tables as they follow each other in files.
#pragma once

#include <array>
#include <cstddef>

#include "db/symbol_table.h"
#include "dxf/group_writer.h"

namespace headless {

/// The classes of their records.
const std::array<AcRxClass*, 9>& tablesInOrder();

/// Writes TABLE with what belongs to it, up to the first record.
void writeTableHead(GroupWriter& to, const AcDbSymbolTable& table, std::size_t records);

} // namespace headless
