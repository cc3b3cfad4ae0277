// Short names of the geometry library's error conditions.
#pragma once

#include "ge/global.h"
