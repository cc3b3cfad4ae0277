// Temporary work that is rolled back.
#pragma once

#include <afxwin.h>

namespace Common {

/// Begins work that UndoEnd takes back: the two are called in pairs.
AFX_EXT_API void UndoBegin();
/// Undoes everything since UndoBegin.
AFX_EXT_API void UndoEnd();

} // namespace Common
