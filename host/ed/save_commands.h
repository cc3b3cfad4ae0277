// The commands that save the current drawing: QSAVE, SAVE and SAVEAS.
#pragma once

class AcEdCommandStack;

namespace headless {

/// QSAVE writes the drawing's own file, and asks for a name when it has none; SAVE writes a copy
/// under a name that it asks for; after SAVEAS that name is the drawing's.
void registerSaving(AcEdCommandStack& commands);

} // namespace headless
