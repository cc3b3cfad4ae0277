// System variables by name.
#pragma once

#include <afxwin.h>
#include <gepnt3d.h>

class AFX_EXT_CLASS rwSysVar {
public:
    /// Not 0 when there is an integer variable of that name; else `value` stays as it is.
    static int GetVar(const wchar_t* name, int* value);
    /// The same for real variables, for which integers serve too, and for points of the plane,
    /// which get the height 0, and of space.
    static int GetVar(const wchar_t* name, double* value);
    static int GetVar(const wchar_t* name, AcGePoint3d* value);
    /// Not 0 when the host took the value.
    static int SetVar(const wchar_t* name, int value);
};
