// Texts in UTF-8, whatever the system's code page. Inside the module only.
#pragma once

#include <string>

#include <afxwin.h>

namespace orncore {

[[nodiscard]] bool isUtf8(const std::string& bytes);

/// What is no UTF-8 becomes U+FFFD.
[[nodiscard]] CString fromUtf8(const std::string& bytes);

} // namespace orncore
