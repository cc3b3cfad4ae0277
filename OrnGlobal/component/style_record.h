// A component style as the list of values of its record in a drawing. Inside the library only.
//
// A marker, the three names and then every field in the order of declaration, layers field by
// field: 46 values, whole numbers and flags as 32-bit integers. Drawings in use depend on it.
#pragma once

#include "component/component_info.h"
#include "frame/resbuf_chain.h"

namespace component {

[[nodiscard]] frame::ResbufChain recordValues(const ComponentInfo& style);

/// The style that a list holds. A value that is missing or of another kind leaves its field as it
/// is in a new style, and costs no other field its value.
///
/// @param values  stays the caller's; null for an empty list.
[[nodiscard]] ComponentInfo styleOfRecord(resbuf* values);

} // namespace component
