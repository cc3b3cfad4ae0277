#include "frame/common_view.h"

#include <afxdisp.h>
#include <rxmfcapi.h>

void Common::ZoomAll() {
    constexpr DISPID kZoomAll = 37; // of the application
    const LPDISPATCH application = acedGetAcadWinApp()->GetIDispatch(TRUE);
    if (application == nullptr) return;
    COleDispatchDriver driver;
    driver.AttachDispatch(application);
    driver.InvokeHelper(kZoomAll, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE);
    driver.ReleaseDispatch();
}
