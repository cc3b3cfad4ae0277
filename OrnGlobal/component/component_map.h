// Styles by key in memory. Inside the library only.
#pragma once

#include <optional>

#include "component/component_info.h"

namespace component {

/// The key of a style: its names joined with "-".
[[nodiscard]] CString keyOf(const CString& group, const CString& type, const CString& style);

/// The first style under the group and the type in the order of the keys.
///
/// @param style  empty for any.
[[nodiscard]] std::optional<ComponentInfo> findStyle(const ComponentMap& styles,
                                                     const CString& group, const CString& type,
                                                     const CString& style);

} // namespace component
