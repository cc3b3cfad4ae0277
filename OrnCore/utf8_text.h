// Texts in UTF-8, whatever the system's code page.
#pragma once

#include <string>

#include <afxwin.h>

namespace orncore {

[[nodiscard]] bool isUtf8(const std::string& bytes);

/// What is no UTF-8 becomes U+FFFD.
[[nodiscard]] AFX_EXT_API CString fromUtf8(const std::string& bytes);

/// Characters that are none, such as halves of pairs, become U+FFFD.
[[nodiscard]] AFX_EXT_API std::string toUtf8(const CString& text);

} // namespace orncore
