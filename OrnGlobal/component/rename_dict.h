// Entries of the drawing's root dictionary under other names.
#pragma once

#include <afxwin.h>

namespace Common {

/// Renames an entry of the working database's root dictionary. Nothing happens when there is no
/// such entry, or another one has the new name, or the dictionary cannot be written.
AFX_EXT_API void RenameDict(CString oldName, CString newName);

} // namespace Common
