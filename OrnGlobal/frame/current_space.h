// The block that new entities go to.
#pragma once

#include <afxwin.h>
#include <dbid.h>

class AcDbDatabase;

namespace Common {

/// Id of a database's current space, or of its model space when it has no current one; null when
/// the block table cannot be opened, which is printed. A null database means the working one.
AFX_EXT_API AcDbObjectId CurrentSpaceId(AcDbDatabase* db);

} // namespace Common

namespace frame {

/// As above for a database that there is, with other words for the refusal.
[[nodiscard]] AcDbObjectId currentSpaceOf(AcDbDatabase& db, const wchar_t* refusal);

} // namespace frame
