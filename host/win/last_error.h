// The calling thread's last error.
#pragma once

#include "win/types.h"

DWORD GetLastError();
void SetLastError(DWORD error);
