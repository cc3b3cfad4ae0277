// String resources as MFC finds them.
#pragma once

#include <optional>
#include <string>

#include "win/types.h"

namespace headless {

/// A string of the current resource module, else of the extension modules, the newest first.
[[nodiscard]] std::optional<std::wstring> findResourceString(UINT id);
/// A string of one module.
[[nodiscard]] std::optional<std::wstring> resourceString(HINSTANCE module, UINT id);

} // namespace headless
