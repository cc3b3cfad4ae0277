// Lists of ids.
#pragma once

#include "db/object_id.h"
#include "rx/array.h"

using AcDbObjectIdArray = AcArray<AcDbObjectId, AcArrayMemCopyReallocator<AcDbObjectId>>;
