// An application with a command.
#include "product_module.h"

int neededValue();

namespace {

void showValue() { acutPrintf(L"\nThe value is %d", neededValue()); }

void start(void* id) {
    acrxUnlockApplication(id);
    acrxRegisterAppMDIAware(id);
    acedRegCmds->addCommand(L"GOOD", L"SHOWVALUE", L"SHOWVALUE", ACRX_CMD_MODAL, showValue);
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, LPVOID /*reserved*/) {
    tell(L"good", reason);
    return TRUE;
}

extern "C" unsigned acrxGetApiVersion() { return 0x140000; }

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* id) {
    acutPrintf(L"<good %d>", message);
    if (message == AcRx::kInitAppMsg) start(id);
    if (message == AcRx::kUnloadAppMsg) acedRegCmds->removeGroup(L"GOOD");
    return AcRx::kRetOK;
}
