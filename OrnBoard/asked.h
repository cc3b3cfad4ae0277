// Answers to the prompts of commands. Inside the module only.
#pragma once

#include <optional>

#include <afxwin.h>
#include <gepnt3d.h>

namespace board {

/// A text, blanks included; empty for Enter alone. Nothing when the user cancelled.
[[nodiscard]] std::optional<CString> askedText(const wchar_t* prompt);

/// One of the keywords; the first for Enter alone. Nothing when the user cancelled.
/// @param keywords  as the platform lists them, joined by blanks.
[[nodiscard]] std::optional<CString> askedKeyword(const wchar_t* prompt, const wchar_t* keywords);

/// A point in user coordinates. Nothing when the user cancelled or gave none.
[[nodiscard]] std::optional<AcGePoint3d> askedPoint(const wchar_t* prompt);

} // namespace board
