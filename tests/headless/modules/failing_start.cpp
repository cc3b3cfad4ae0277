// A module whose start-up fails.
#include "product_module.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD /*reason*/, LPVOID /*reserved*/) {
    return FALSE;
}

extern "C" unsigned acrxGetApiVersion() { return 0x140000; }
