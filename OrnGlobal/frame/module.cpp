// The module's entry: start-up inside the host, and the host release it is made for.
#include <acui.h>
#include <afxdllx.h>
#include <afxwin.h>

namespace {

AFX_EXTENSION_MODULE moduleRecord = {FALSE, nullptr, nullptr};
HINSTANCE moduleInstance = nullptr;

/// The second extension module that lives in this library, with the resources that were current
/// when it was started.
struct ResourceModule {
    AFX_EXTENSION_MODULE record = {FALSE, nullptr, nullptr};
    int started = 0;
    HINSTANCE hostResources = nullptr;
    HINSTANCE instance = nullptr;

    /// @return  0 when it had been started before or could not be.
    int start(HINSTANCE loaded) {
        if (started != 0) return 0;
        started = AfxInitExtensionModule(record, loaded);
        if (started == 0) return started;
        hostResources = AfxGetResourceHandle();
        instance = loaded;
        new CDynLinkLibrary(record);
        return started;
    }
    void stop() {
        if (started == 0) return;
        AfxTermExtensionModule(record);
        started = 0;
    }
};

ResourceModule resourceModule;

int attach(HINSTANCE instance) {
    const int initialised = AfxInitExtensionModule(moduleRecord, instance);
    if (initialised == 0) return initialised;
    InitAcUiDLL();
    resourceModule.start(instance);
    moduleInstance = instance;
    // The library's list takes it over and frees it when the record is ended.
    new CDynLinkLibrary(moduleRecord);
    return 1;
}

void detach() {
    AfxTermExtensionModule(moduleRecord);
    resourceModule.stop();
}

} // namespace

extern "C" AFX_EXT_API int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) return attach(instance);
    if (reason == DLL_PROCESS_DETACH) detach();
    return 1;
}

// Release 20.
extern "C" AFX_EXT_API unsigned int acrxGetApiVersion() { return 0x140000; }
