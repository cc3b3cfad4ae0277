// Names that the host itself uses in drawings and for its system variables.
#pragma once

#include <afxwin.h>

/// Names and texts with a meaning in every drawing.
struct AFX_EXT_CLASS AcadString {
    static const wchar_t* const bylayer;
    static const wchar_t* const byblock;
    static const wchar_t* const continuous;
    static const wchar_t* const standard;
    static const wchar_t* const none;
    static const wchar_t* const varies1;
    static const wchar_t* const varies2;
    static const wchar_t* const zero;
    static const wchar_t* const wcAll; // matches every name
    static const wchar_t* const openBrace;
    static const wchar_t* const endBrace;
    static const wchar_t* const nullStr; // the empty text
};

/// Names of system variables.
struct AFX_EXT_CLASS AcadVar {
    static const wchar_t* const cmdecho;
    static const wchar_t* const filedia;
    static const wchar_t* const cvport;
    static const wchar_t* const snapang;
    static const wchar_t* const viewdir;
    static const wchar_t* const viewsize;
    static const wchar_t* const adserr; // named for the interface whose last error it holds
};
