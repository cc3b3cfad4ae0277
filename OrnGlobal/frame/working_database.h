// What a null database means. Inside the library only.
#pragma once

#include <dbapserv.h>
#include <dbmain.h>

namespace frame {

/// The database itself, or the working one for null; null only when there is no drawing at all.
inline AcDbDatabase* orWorking(AcDbDatabase* db) {
    return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

} // namespace frame
