// The C run time's names for text of the build's width.
#pragma once

#include "win/crt.h"
#include "win/tchar.h"
