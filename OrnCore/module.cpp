// The module's entry: what the module keeps lasts no longer than it is loaded.
#include <afxwin.h>

#include "OrnCore/quill_config.h"

extern "C" AFX_EXT_API int APIENTRY DllMain(HINSTANCE /*instance*/, DWORD reason,
                                            LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH || reason == DLL_PROCESS_DETACH) g_pQuillCfgSet->Reset();
    return 1;
}
