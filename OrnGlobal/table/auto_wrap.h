// Calling members of automation objects by their names.
#pragma once

#include <cstdarg>

#include <afxdisp.h>

namespace kelmor {

/// Calls a member by name.
///
/// @param flags   DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, ...
/// @param result  the caller's to clear; may be null.
/// @param count   of the VARIANTs that follow, the last argument first.
/// @return        the call's own code; -1 without an object, for an unknown name and for a failed
///                call. Nothing is shown.
AFX_EXT_API long AutoWrap(int flags, VARIANT* result, IDispatch* object, CString name, int count,
                          ...);

/// The same with the arguments in a list.
long autoWrap(int flags, VARIANT* result, IDispatch* object, CString name, int count,
              std::va_list arguments);

} // namespace kelmor
