// The command BOARDNUMBER: numbers boards in reading order, or clears their numbers.
#pragma once

namespace board {

void numberingCommand();

} // namespace board
