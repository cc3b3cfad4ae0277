// AcGePoint3d.
#pragma once

#include "ge/point3d.h"
