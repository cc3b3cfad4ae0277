// The C run time's names for text of the build's width, which is wide.
#pragma once

#include "win/casing.h"

#define __T(x) L##x
#define _T(x) __T(x)
#define _TEXT(x) __T(x)
