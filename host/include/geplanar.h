// AcGePlanarEnt.
#pragma once

#include "ge/plane.h"
