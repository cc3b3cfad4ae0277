#include "db/sequence_end.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, "SEQEND")
