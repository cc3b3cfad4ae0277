// Values of table records that stand in applications' data: fonts of text styles, transparencies of
// layers.
#pragma once

#include <span>

#include "db/dxf_filer.h"

class AcDbObject;

namespace headless {

/// Takes them from the groups of the object's record; does nothing for other kinds of objects.
void readApplicationValues(AcDbObject& object, std::span<const DxfTag> groups,
                           const AcDbDxfFiler& filer);

} // namespace headless
