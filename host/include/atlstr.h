// CString alone.
#pragma once

#include "mfc/string.h"
#include "tchar.h"
#include "windows.h"
