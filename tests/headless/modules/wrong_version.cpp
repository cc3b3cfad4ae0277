// A module made for another release.
#include "product_module.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, LPVOID /*reserved*/) {
    tell(L"wrong", reason);
    return TRUE;
}

extern "C" unsigned acrxGetApiVersion() { return 0x150000; }
