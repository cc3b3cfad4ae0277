// AcGeCurve3d.
#pragma once

#include "ge/curve.h"
