// Named arrays of the geometry library.
#pragma once

#include "ge/arrays.h"
