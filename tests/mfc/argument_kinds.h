// The kinds of a call's arguments, as drivers take them.
#pragma once

#include <afxdisp.h>

namespace test_support {

inline const BYTE* kinds(const char* text) { return reinterpret_cast<const BYTE*>(text); }

} // namespace test_support
