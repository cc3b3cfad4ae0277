// An integer system variable that has another value for the length of a scope.
#pragma once

#include <afxwin.h>

/// Sets the variable, and in the end writes back what it was. A copy writes the same value back
/// again when it ends. Nothing is reported.
class AFX_EXT_CLASS AutoSetSysVar {
public:
    AutoSetSysVar(const CString& name, int value);
    AutoSetSysVar(const AutoSetSysVar&) = default;
    AutoSetSysVar& operator=(const AutoSetSysVar&) = default;
    ~AutoSetSysVar();

private:
    int saved_ = 0; // What a variable gets that could not be read.
    CString name_;
};
