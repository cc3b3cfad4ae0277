// Single-line texts as they show. Inside this folder only.
#pragma once

#include <afxwin.h>

namespace table {

/// The text with its codes as characters: %%c is Ø, %%d °, %%p ±, %%% a percent sign, %%065 "A".
/// Codes for lines under, over and through the letters go. Codes from 128 on stay, as it is the
/// font that tells what they show.
[[nodiscard]] CString shownText(const CString& text);

} // namespace table
