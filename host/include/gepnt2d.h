// AcGePoint2d.
#pragma once

#include "ge/point2d.h"
