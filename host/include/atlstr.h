// CString and text conversions.
#pragma once

#include "mfc/conversion.h"
#include "mfc/string.h"
#include "tchar.h"
#include "windows.h"
