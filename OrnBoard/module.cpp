// Entry points of the module: what the platform calls when it loads and unloads it.
#include <aced.h>
#include <afxdllx.h>
#include <afxwin.h>
#include <rxregsvc.h>

#include "measure_command.h"

namespace {

constexpr int kApiVersion = 0x140000; // release 20
constexpr const wchar_t* kCommandGroup = L"ORNBOARD";

AFX_EXTENSION_MODULE extensionModule;

} // namespace

extern "C" AFX_EXT_API int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        if (!AfxInitExtensionModule(extensionModule, instance)) return 0;
        new CDynLinkLibrary(extensionModule);
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(extensionModule);
    }
    return 1;
}

extern "C" AFX_EXT_API int acrxGetApiVersion() { return kApiVersion; }

extern "C" AFX_EXT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                       void* application) {
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxUnlockApplication(application);
        acrxRegisterAppMDIAware(application);
        acedRegCmds->addCommand(kCommandGroup, L"BOARDAREA", L"BOARDAREA", ACRX_CMD_MODAL,
                                board::measureCommand);
        break;
    case AcRx::kUnloadAppMsg:
        acedRegCmds->removeGroup(kCommandGroup);
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}
