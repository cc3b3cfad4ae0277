// AcGeCurve2d.
#pragma once

#include "ge/curve.h"
