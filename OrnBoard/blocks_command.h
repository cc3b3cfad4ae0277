// The command BOARDBLOCK: makes a block of the entities on some layers, or inserts one.
#pragma once

namespace board {

/// Asks which, and for names and a point, and prints on the command line what was done.
void blocksCommand();

} // namespace board
