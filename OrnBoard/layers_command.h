// The command BOARDLAYERS: lists the product's numbered layers, or makes some in the current
// drawing.
#pragma once

namespace board {

/// Asks for numbers and prints on the command line what was done.
void layersCommand();

} // namespace board
