// The number texts that stand in boards.
#pragma once

#include <afxwin.h>
#include <dbidar.h>

namespace Common {

/// The key of the extended data in which a number's text keeps the point it was put at: where it
/// counts, wherever the text was moved for legibility.
inline constexpr const wchar_t* kBoardNumberPoint = L"板编号插入点";

/// Erases the number texts inside outlines: texts of one line on the layers whose point, by its
/// extended data, else its alignment, else its position, lies inside or on the outline.
///
/// Of an outline that is in groups only their members are looked at, else all texts that touch the
/// outline's extents. Outlines that are no lightweight polylines contain nothing.
///
/// @param layers  names joined by ",". Members of groups must be on a layer whose name in capitals
///                equals one of them; for other texts the list is one of wildcards in any case.
AFX_EXT_API void ClearBoardNumber(const AcDbObjectIdArray& outlines, const CString& layers);

} // namespace Common
