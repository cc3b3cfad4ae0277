// The class of the object that a record of a drawing file describes.
#pragma once

#include <string_view>

#include "db/dxf_filer.h"

namespace headless {

/// Several classes share the names POLYLINE, VERTEX, INSERT and DIMENSION; their records tell which
/// is meant by their subclass markers and flags.
/// @return  null for a name that no class has: the object is opaque.
[[nodiscard]] AcRxClass* classOfRecord(std::string_view dxfName, const DxfRecord& record);

} // namespace headless
