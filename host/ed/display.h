// What is on the screen, as far as programs can ask for it: bringing it up to date.
#pragma once

/// Shows all changes made so far. There is no screen here; the session counts the calls.
void acedUpdateDisplay();
