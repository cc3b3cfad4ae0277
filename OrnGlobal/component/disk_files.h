// Files on disk: whether one is there, making one, replacing one. Paths take either separator.
#pragma once

#include <afxwin.h>

namespace GSF {

/// Makes an empty file where none is, with the folders that its path lacks. Does nothing more when
/// a folder or the file cannot be made; an existing file stays as it is.
AFX_EXT_API void TouchFile(CString path);

} // namespace GSF

namespace component {

/// False, too, for a path that cannot be looked at.
[[nodiscard]] bool fileExists(const CString& path) noexcept;

/// Gives an existing file a new text, in the host's text mode. The old text stays when the new one
/// cannot be written in full.
void replaceText(const CString& path, const CString& text);

} // namespace component
