// The command BOARDAREA: measures the boards of the current drawing.
#pragma once

namespace board {

/// Asks for layers and prints the report on the command line.
void measureCommand();

} // namespace board
