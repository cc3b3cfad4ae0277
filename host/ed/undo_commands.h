// The commands UNDO, U and REDO on the current drawing's undo journal.
#pragma once

class AcEdCommandStack;

namespace headless {

void addUndoCommands(AcEdCommandStack& commands);

} // namespace headless
