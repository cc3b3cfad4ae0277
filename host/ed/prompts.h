// The calls that ask the user for something.
//
// Each prints its prompt (none for null), takes the next answer of the input, and asks again after
// saying what is wrong until the answer fits. They return RTNORM; RTNONE for Enter alone; RTCAN for
// Escape or when there is no more input; RTKWORD for a keyword, to be read with acedGetInput.
#pragma once

#include <cstddef>

#include "db/resbuf.h"

inline constexpr int RSG_NONULL = 1;  // Enter alone is no answer
inline constexpr int RSG_NOZERO = 2;  // 0 is no answer
inline constexpr int RSG_NONEG = 4;   // negative numbers are no answer
inline constexpr int RSG_NOLIM = 8;   // points outside the limits are taken; here they always are
inline constexpr int RSG_DASH = 32;   // dashed rubber band
inline constexpr int RSG_2D = 64;     // distances ignore z
inline constexpr int RSG_OTHER = 128; // any other text is taken like a keyword

/// Sets what the next prompt refuses and the keywords it takes (see Keywords); null for none.
int acedInitGet(int flags, const ACHAR* keywords);

/// The last keyword or other text: at most 132 characters and a terminating zero.
/// RTERROR when there was none.
int acedGetInput(ACHAR* text);
int acedGetInput(ACHAR* text, std::size_t size);

/// @param spaces  nonzero: blanks belong to the text, Enter ends it.
/// @param text    room for 133 characters, or for `size` of them.
/// Enter alone gives the empty text and RTNORM. Clicks are passed over.
int acedGetString(int spaces, const ACHAR* prompt, ACHAR* text);
int acedGetString(int spaces, const ACHAR* prompt, ACHAR* text, std::size_t size);

/// A keyword of the list given to acedInitGet; RTERROR without one.
int acedGetKword(const ACHAR* prompt, ACHAR* keyword);
int acedGetKword(const ACHAR* prompt, ACHAR* keyword, std::size_t size);

/// A whole number from -32768 to 32767.
int acedGetInt(const ACHAR* prompt, int* result);

int acedGetReal(const ACHAR* prompt, ads_real* result);

/// A point in user coordinates.
/// @param base  what relative coordinates start from, or null for the last point (LASTPOINT).
int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result);
/// The same with a base that is needed: RTERROR without. Programs draw a box from there.
int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result);
