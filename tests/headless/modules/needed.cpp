// A product module that another one needs.
#include "product_module.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, LPVOID /*reserved*/) {
    tell(L"needed", reason);
    return TRUE;
}

int neededValue() { return 42; }

extern "C" unsigned acrxGetApiVersion() { return 0x140000; }
