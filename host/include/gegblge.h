// AcGe: the geometry library's enumerations.
#pragma once

#include "ge/global.h"
