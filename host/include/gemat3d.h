// AcGeMatrix3d.
#pragma once

#include "ge/matrix3d.h"
