// Component styles in JSON files. Inside the library only.
//
// A missing file is empty; one that is no JSON, or more than memory holds, is empty too, with a
// message box. Nothing is thrown.
#pragma once

#include <optional>

#include "component/component_info.h"

namespace component {

/// The file that the product comes with, in its folder.
[[nodiscard]] CString defaultsFile();

[[nodiscard]] ComponentMap readStyles(const CString& path);

/// One style of a file, the first in the order of its bytes; any for an empty style name.
[[nodiscard]] std::optional<ComponentInfo> readStyle(const CString& path, const CString& group,
                                                     const CString& type, const CString& style);

/// Replaces the file, or makes it with the folders on the way. Failures are not reported.
void writeStyles(const ComponentMap& styles, const CString& path);

} // namespace component
