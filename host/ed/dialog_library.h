// The platform's library of dialogs, as far as modules start it.
#pragma once

/// Starts the library; every module that uses it calls this from its DllMain.
void InitAcUiDLL();
