#include "db/object_iterator.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObjectIterator, AcRxObject)
