// Integer system variables by name.
#pragma once

#include <afxwin.h>

class AFX_EXT_CLASS rwSysVar {
public:
    /// Not 0 when there is an integer variable of that name; else `value` stays as it is.
    static int GetVar(const wchar_t* name, int* value);
    /// Not 0 when the host took the value.
    static int SetVar(const wchar_t* name, int value);
};
