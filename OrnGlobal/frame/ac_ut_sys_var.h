// System variables by name and type.
#pragma once

#include <acestext.h>
#include <adslib.h>
#include <afxwin.h>
#include <gepnt2d.h>
#include <gepnt3d.h>

class AFX_EXT_CLASS AcUtSysVar {
public:
    // Reading. eInvalidInput, leaving `value`, when the host has no such variable. The variable
    // must be of the kind that is asked for.

    static Acad::ErrorStatus getSysVar(const wchar_t* name, int& value);
    static Acad::ErrorStatus getSysVar(const wchar_t* name, double& value);
    static Acad::ErrorStatus getSysVar(const wchar_t* name, CString& value);
    static Acad::ErrorStatus getSysVar(const wchar_t* name, AcGePoint2d& value);
    static Acad::ErrorStatus getSysVar(const wchar_t* name, AcGePoint3d& value);

    // Setting. eInvalidInput, without a word to the user, when the host refuses.

    /// The value is cut to its low 16 bits.
    static Acad::ErrorStatus setSysVar(const wchar_t* name, int value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, double value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, const wchar_t* value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, const AcGePoint3d& value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, const AcGePoint2d& value);
    static Acad::ErrorStatus setVar(const wchar_t* name, const resbuf* value);
};
