// The command BOARDPICK: tells the layer under a point.
#pragma once

namespace board {

void pickCommand();

} // namespace board
