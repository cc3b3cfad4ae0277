// The command BOARDSTYLES: lists, loads and saves the component styles of the current drawing.
#pragma once

namespace board {

/// Asks which and for the file, and prints on the command line what was done.
void stylesCommand();

} // namespace board
