// Calling members of an automation object by their numbers.
#pragma once

#include "mfc/ole_exception.h"
#include "win/dispatch.h"

// Types of arguments, joined to one text: each is passed as the C++ type named.
#define VTS_NONE nullptr
#define VTS_I2 "\x02"       // short, as int
#define VTS_I4 "\x03"       // LONG
#define VTS_R4 "\x04"       // float, as double
#define VTS_R8 "\x05"       // double
#define VTS_BSTR "\x08"     // LPCTSTR
#define VTS_DISPATCH "\x09" // LPDISPATCH
#define VTS_BOOL "\x0B"     // BOOL
#define VTS_VARIANT "\x0C"  // const VARIANT*

/// Holds a reference to an object, which it gives back in the end unless told otherwise.
class COleDispatchDriver {
public:
    COleDispatchDriver() = default;
    explicit COleDispatchDriver(LPDISPATCH dispatch, BOOL autoRelease = TRUE)
        : m_lpDispatch(dispatch), m_bAutoRelease(autoRelease) {}
    /// A reference of its own to the same object.
    COleDispatchDriver(const COleDispatchDriver& other);
    COleDispatchDriver& operator=(const COleDispatchDriver& other);
    ~COleDispatchDriver() { ReleaseDispatch(); }

    /// Takes the caller's reference over, after giving back what was held.
    void AttachDispatch(LPDISPATCH dispatch, BOOL autoRelease = TRUE);
    /// Leaves the reference to the caller.
    LPDISPATCH DetachDispatch();
    /// Gives the reference back, unless it was attached not to be.
    void ReleaseDispatch();
    operator LPDISPATCH() { return m_lpDispatch; }

    /// Calls a member.
    ///
    /// @param flags    DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, ...
    /// @param type     the result's: VT_EMPTY for none; into short, LONG, float, double, CString,
    ///                 LPDISPATCH (the caller's reference), BOOL, VARIANT (freed by the caller)
    /// @param result   where it goes
    /// @param argumentTypes  VTS_... of the arguments that follow
    /// Throws COleDispatchException for an error that the member tells of, COleException for
    /// others: without an object E_POINTER, for a result of another type DISP_E_TYPEMISMATCH.
    void InvokeHelper(DISPID member, WORD flags, VARTYPE type, void* result,
                      const char* argumentTypes, ...);

    LPDISPATCH m_lpDispatch = nullptr;
    BOOL m_bAutoRelease = TRUE;
};
