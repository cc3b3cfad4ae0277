// Automation's values: a type and a value of that type.
#pragma once

#include "win/bstr.h"
#include "win/types.h"

struct IUnknown;
struct IDispatch;

typedef unsigned short VARTYPE;
typedef short VARIANT_BOOL;
typedef LONG SCODE;
typedef double DATE;

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

enum VARENUM : VARTYPE {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13
};

struct VARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        SHORT iVal;
        LONG lVal;
        float fltVal;
        double dblVal;
        DATE date;
        VARIANT_BOOL boolVal;
        SCODE scode;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
    };
};
typedef VARIANT VARIANTARG;
typedef VARIANT* LPVARIANT;

constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001U);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003U);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004U);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005U);
constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006U);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008U);
constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009U);
constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000EU);

/// Makes it VT_EMPTY without looking at what it held.
void VariantInit(VARIANT* variant);
/// Frees what it holds and makes it VT_EMPTY. DISP_E_BADVARTYPE, changing nothing, for a type that
/// is none.
HRESULT VariantClear(VARIANT* variant);
/// Clears `target` and gives it a copy: a text of its own, a reference of its own.
HRESULT VariantCopy(VARIANT* target, const VARIANT* source);
