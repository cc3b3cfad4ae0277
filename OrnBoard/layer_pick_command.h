// The command LAYERPICK: chooses layers by picking entities.
#pragma once

namespace board {

/// Lets the user pick until Enter, and prints the names of the layers joined by commas.
void layerPickCommand();

} // namespace board
