// What every module of these tests does: tells on the command line when it is called.
#pragma once

#include <accmd.h>
#include <adslib.h>
#include <rxdefs.h>
#include <rxregsvc.h>
#include <windows.h>

/// Prints "<name> attach" and so on.
inline void tell(const wchar_t* name, DWORD reason) {
    acutPrintf(L"<%s %s>", name, reason == DLL_PROCESS_ATTACH ? L"attach" : L"detach");
}
