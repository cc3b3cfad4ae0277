// AcGeLinearEnt3d.
#pragma once

#include "ge/linear_entity.h"
