// Automation's VARIANT, laid out as on a 64-bit system, and the calls on it.
#pragma once

#include "win/bstr.h"
#include "win/constants.h"

struct IUnknown;
struct IDispatch;
struct SAFEARRAY;

typedef unsigned short VARTYPE;
typedef SHORT VARIANT_BOOL;
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
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_TYPEMASK = 0x0FFF,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000
};

/// Ten-thousandths of a unit of money.
union CY {
    struct {
        ULONG Lo;
        LONG Hi;
    };
    LONGLONG int64;
};

/// 96 bits and a power of ten.
struct DECIMAL {
    USHORT wReserved;
    BYTE scale;
    BYTE sign;
    ULONG Hi32;
    ULONGLONG Lo64;
};

struct tagVARIANT {
    union {
        struct {
            VARTYPE vt;
            WORD wReserved1;
            WORD wReserved2;
            WORD wReserved3;
            union {
                LONGLONG llVal;
                LONG lVal;
                BYTE bVal;
                SHORT iVal;
                FLOAT fltVal;
                DOUBLE dblVal;
                VARIANT_BOOL boolVal;
                SCODE scode;
                CY cyVal;
                DATE date;
                BSTR bstrVal;
                IUnknown* punkVal;
                IDispatch* pdispVal;
                SAFEARRAY* parray;
                BYTE* pbVal;
                SHORT* piVal;
                LONG* plVal;
                LONGLONG* pllVal;
                FLOAT* pfltVal;
                DOUBLE* pdblVal;
                VARIANT_BOOL* pboolVal;
                SCODE* pscode;
                CY* pcyVal;
                DATE* pdate;
                BSTR* pbstrVal;
                IUnknown** ppunkVal;
                IDispatch** ppdispVal;
                SAFEARRAY** pparray;
                tagVARIANT* pvarVal;
                PVOID byref;
                CHAR cVal;
                USHORT uiVal;
                ULONG ulVal;
                ULONGLONG ullVal;
                INT intVal;
                UINT uintVal;
                struct {
                    PVOID pvRecord;
                    PVOID pRecInfo;
                };
            };
        };
        DECIMAL decVal;
    };
};
typedef tagVARIANT VARIANT;
typedef tagVARIANT VARIANTARG;
typedef VARIANT* LPVARIANT;
typedef const VARIANT* LPCVARIANT;
static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, lVal) == 8);

#define V_VT(variant) ((variant)->vt)
#define V_I2(variant) ((variant)->iVal)
#define V_I4(variant) ((variant)->lVal)
#define V_R4(variant) ((variant)->fltVal)
#define V_R8(variant) ((variant)->dblVal)
#define V_DATE(variant) ((variant)->date)
#define V_BSTR(variant) ((variant)->bstrVal)
#define V_BOOL(variant) ((variant)->boolVal)
#define V_ERROR(variant) ((variant)->scode)
#define V_DISPATCH(variant) ((variant)->pdispVal)
#define V_ARRAY(variant) ((variant)->parray)

constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001U);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003U);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004U);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005U);
constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006U);
constexpr HRESULT DISP_E_NONAMEDARGS = static_cast<HRESULT>(0x80020007U);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008U);
constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009U);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000AU);
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000BU);
constexpr HRESULT DISP_E_ARRAYISLOCKED = static_cast<HRESULT>(0x8002000DU);
constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000EU);

constexpr USHORT VARIANT_NOVALUEPROP = 1;
constexpr USHORT VARIANT_ALPHABOOL = 2;
constexpr USHORT VARIANT_LOCALBOOL = 16;

void VariantInit(VARIANTARG* variant);
/// Frees what the variant owns; what it refers to (VT_BYREF) stays. DISP_E_BADVARTYPE for a type
/// that is none.
HRESULT VariantClear(VARIANTARG* variant);
/// A copy of its own: texts and arrays are copied, objects counted once more.
HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source);
/// The same, of what a VT_BYREF variant refers to.
HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source);
/// Converts as the Chinese locale does; a failing change leaves the target as it was. Texts are not
/// understood as dates.
HRESULT VariantChangeType(VARIANTARG* target, const VARIANTARG* source, USHORT flags, VARTYPE type);

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

/// Days since 1899-12-30 as a calendar date, years 100 to 9999, and a time to the second. The
/// fraction counts forward before that day too. FALSE outside these years.
INT VariantTimeToSystemTime(DOUBLE days, SYSTEMTIME* time);
INT SystemTimeToVariantTime(const SYSTEMTIME* time, DOUBLE* days);
