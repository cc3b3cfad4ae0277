// Component styles as a JSON document: three levels of objects by name, group, type and style, and
// in each style its fields. Inside the library only.
#pragma once

#include <optional>

#include <json/value.h>

#include "component/component_info.h"

namespace component {

/// All styles of a document. Members of the upper levels that are no objects are passed over; of
/// styles with the same key the later one stays. Absent fields are 0 and empty.
[[nodiscard]] ComponentMap stylesOf(const Json::Value& document);

/// The first style of a document under the group and the type, in the order of the names' bytes.
///
/// @param style  empty for any.
[[nodiscard]] std::optional<ComponentInfo> findStyle(const Json::Value& document,
                                                     const CString& group, const CString& type,
                                                     const CString& style);

/// The document of the styles under the names that they carry themselves; of styles with the same
/// names the later one stays.
[[nodiscard]] Json::Value documentOf(const ComponentMap& styles);

} // namespace component
