// The platform's basic types.
#pragma once

#include <cstdint>

using ACHAR = wchar_t;

namespace Adesk {
using Boolean = bool;
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using IntDbId = std::intptr_t;
using GsMarker = std::intptr_t;
using uchar = unsigned char;
inline constexpr Boolean kTrue = true;
inline constexpr Boolean kFalse = false;
} // namespace Adesk

// The platform spells these in capitals too; `#ifndef` lets windows.h define them first.
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

#define ACRX_T(x) L##x
