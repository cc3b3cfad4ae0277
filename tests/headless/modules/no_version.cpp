// A library that is no module: the version it seems to have is that of one it needs.
#include "product_module.h"

int neededValue();

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, LPVOID /*reserved*/) {
    tell(L"none", reason);
    return neededValue() == 42 ? TRUE : FALSE;
}
