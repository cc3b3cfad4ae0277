// The platform's wildcard patterns.
//
//   #      one digit                      [...]   one of the characters, `a-z` is a range
//   @      one letter                     [~...]  none of them
//   .      one character that is neither  ~       first in a pattern: whatever does not match it
//   *      any characters, or none        ,       between alternatives
//   ?      any one character              `       the next character as it stands
#pragma once

#include <string_view>

#include "rx/types.h"

namespace headless {

/// True when the whole of `text` matches one of the pattern's alternatives; case counts.
/// Takes at most a time proportional to length of text times length of pattern.
[[nodiscard]] bool matchesWildcard(std::wstring_view text, std::wstring_view pattern);

} // namespace headless

/// RTNORM when `string` matches `pattern` (see above), else RTERROR; null texts match nothing.
int acutWcMatch(const ACHAR* string, const ACHAR* pattern);
