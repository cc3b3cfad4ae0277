// AcGeContext, the default tolerances.
#pragma once

#include "ge/tol.h"
