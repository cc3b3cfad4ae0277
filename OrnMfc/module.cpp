// The module's entry: its start-up as an extension of the program's MFC.
#include <afxdllx.h>
#include <afxwin.h>

namespace {

AFX_EXTENSION_MODULE moduleRecord = {FALSE, nullptr, nullptr};

} // namespace

extern "C" AFX_EXT_API int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        if (AfxInitExtensionModule(moduleRecord, instance) == 0) return 0;
        // The library's list takes it over and frees it when the record is ended.
        new CDynLinkLibrary(moduleRecord);
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(moduleRecord);
    }
    return 1;
}
