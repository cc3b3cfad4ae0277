// The command BOARDTABLE: reads the tables drawn in the current drawing.
#pragma once

namespace board {

/// Asks for a window and a file, and prints the tables or what was written.
void tablesCommand();

} // namespace board
