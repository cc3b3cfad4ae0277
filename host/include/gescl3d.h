// AcGeScale3d.
#pragma once

#include "ge/scale3d.h"
