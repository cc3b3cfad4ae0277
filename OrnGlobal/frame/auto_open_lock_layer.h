// Locked layers that are unlocked for the length of a scope.
#pragma once

#include <afxwin.h>
#include <dbidar.h>

class AcDbDatabase;

namespace kelmor {

/// Unlocks every locked layer of the working database, whatever database is given, and returns
/// which those were. Layers that somebody has open are left out.
AFX_EXT_API AcDbObjectIdArray OpenAllLockLayer(AcDbDatabase* db);

} // namespace kelmor

/// Unlocks all locked layers, and in the end locks them again; one that cannot be opened then stays
/// unlocked. Nothing is reported.
class AFX_EXT_CLASS AutoOpenLockLayer {
public:
    AutoOpenLockLayer();
    AutoOpenLockLayer(const AutoOpenLockLayer&) = default;
    AutoOpenLockLayer& operator=(const AutoOpenLockLayer&) = default;
    ~AutoOpenLockLayer();

private:
    AcDbObjectIdArray unlocked_;
};
