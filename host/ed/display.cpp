#include "ed/display.h"

#include "ed/state.h"

void acedUpdateDisplay() { ++headless::EdState::current().displayUpdates; }
