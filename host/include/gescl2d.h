// AcGeScale2d.
#pragma once

#include "ge/scale2d.h"
