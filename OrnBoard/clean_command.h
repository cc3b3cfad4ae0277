// The command BOARDCLEAN: clears the blocks that the commands between two of its calls added.
#pragma once

namespace board {

/// Asks whether the work begins or is to be cleared after, and prints what was cleared.
void cleanCommand();

} // namespace board
