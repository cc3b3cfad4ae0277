// COleDispatchDriver: late-bound calls with C arguments.
#pragma once

#include <cstdarg>

#include "mfc/ole_exception.h"
#include "mfc/ole_variant.h"
#include "win/dispatch.h"

// The kinds of the arguments that follow, one letter each, put together as one text.
#define VTS_I2 "\x02"   ///< short
#define VTS_I4 "\x03"   ///< long, of which the low 32 bits count
#define VTS_R4 "\x04"   ///< float
#define VTS_R8 "\x05"   ///< double
#define VTS_CY "\x06"   ///< const CY*
#define VTS_DATE "\x07" ///< DATE
#define VTS_BSTR "\x08" ///< LPCTSTR
#define VTS_WBSTR VTS_BSTR
#define VTS_DISPATCH "\x09" ///< IDispatch*
#define VTS_SCODE "\x0A"    ///< SCODE
#define VTS_BOOL "\x0B"     ///< BOOL
#define VTS_VARIANT "\x0C"  ///< const VARIANT*
#define VTS_UNKNOWN "\x0D"  ///< IUnknown*
#define VTS_UI1 "\x0F"      ///< BYTE
#define VTS_I8 "\x14"       ///< LONGLONG
#define VTS_NONE nullptr

/// One object behind an IDispatch, or none.
class COleDispatchDriver {
public:
    COleDispatchDriver() = default;
    /// Takes over the caller's reference; gives it back at the end when `autoRelease`.
    explicit COleDispatchDriver(LPDISPATCH dispatch, BOOL autoRelease = TRUE)
        : m_lpDispatch(dispatch), m_bAutoRelease(autoRelease) {}
    /// Counts the object once more.
    COleDispatchDriver(const COleDispatchDriver& source);
    COleDispatchDriver& operator=(const COleDispatchDriver& source);
    ~COleDispatchDriver() { ReleaseDispatch(); }

    /// Starts a server; FALSE, with the status in `exception`, when it is not there.
    BOOL CreateDispatch(REFCLSID classId, COleException* exception = nullptr);
    BOOL CreateDispatch(LPCTSTR programId, COleException* exception = nullptr);
    /// Lets go of the object held and takes over the caller's reference to another.
    void AttachDispatch(LPDISPATCH dispatch, BOOL autoRelease = TRUE);
    LPDISPATCH DetachDispatch();
    void ReleaseDispatch();

    /// Calls a member and puts its result, converted to `resultType`, where `result` points: a
    /// CString for VT_BSTR, a BOOL for VT_BOOL, a LONG (32 bits) for VT_I4, the type's own
    /// otherwise. Throws COleDispatchException when the member failed with a text, else
    /// COleException.
    /// @param kinds  VTS_... of the arguments that follow, or null for none.
    void InvokeHelper(DISPID member, WORD flags, VARTYPE resultType, void* result,
                      const BYTE* kinds, ...);
    void InvokeHelperV(DISPID member, WORD flags, VARTYPE resultType, void* result,
                       const BYTE* kinds, std::va_list arguments);
    void GetProperty(DISPID member, VARTYPE type, void* value) const;
    /// The value follows; `type` is its VARENUM number.
    void SetProperty(DISPID member, VARTYPE type, ...);

    operator LPDISPATCH() { return m_lpDispatch; }

    LPDISPATCH m_lpDispatch = nullptr;
    BOOL m_bAutoRelease = TRUE;

protected:
    /// Throws on failure; the result is the caller's.
    VARIANT invoke(DISPID member, WORD flags, VARTYPE resultType, const BYTE* kinds,
                   std::va_list& arguments) const;
};
