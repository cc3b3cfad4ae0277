// A product module as somebody else would write it: one command over the library.
#include <accmd.h>
#include <aced.h>
#include <adslib.h>
#include <rxregsvc.h>

#include "geometry/common_area.h"

namespace {

void printLength() {
    acutPrintf(L"\nTINY %s", Common::GetDecimalText(1234.5, L"0.00", L"米").GetString());
}

} // namespace

extern "C" AFX_EXT_API int acrxGetApiVersion() { return 0x140000; }

extern "C" AFX_EXT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                       void* application) {
    if (message == AcRx::kInitAppMsg) {
        acrxUnlockApplication(application);
        acedRegCmds->addCommand(L"TINY", L"TINYLENGTH", L"TINYLENGTH", ACRX_CMD_MODAL, printLength);
    } else if (message == AcRx::kUnloadAppMsg) {
        acedRegCmds->removeGroup(L"TINY");
    }
    return AcRx::kRetOK;
}
