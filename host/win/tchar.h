// The C run time's names for text of the build's width, which is wide.
#pragma once

#include <cwchar>

#include "win/casing.h"

#define __T(x) L##x
#define _T(x) __T(x)
#define _TEXT(x) __T(x)

#define _tcslen wcslen
#define _tcscpy wcscpy
#define _tcscat wcscat
#define _tcscmp wcscmp
#define _tcsncmp wcsncmp
#define _tcsncpy wcsncpy
#define _tcschr wcschr
#define _tcsrchr wcsrchr
#define _tcsstr wcsstr
#define _tcsicmp _wcsicmp
#define _tcsnicmp _wcsnicmp
#define _tcsupr _wcsupr
#define _tcslwr _wcslwr
#define _tcsdup _wcsdup
#define _tcscpy_s wcscpy_s
#define _tcscat_s wcscat_s
#define _tcsncpy_s wcsncpy_s
#define _tstoi _wtoi
#define _ttoi _wtoi
#define _tstof _wtof
#define _ttof _wtof
#define _itot _itow
#define _itot_s _itow_s
#define _stprintf_s swprintf_s
#define _sntprintf _snwprintf
#define _sntprintf_s _snwprintf_s
#define _vsntprintf _vsnwprintf
