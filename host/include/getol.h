// AcGeTol.
#pragma once

#include "ge/tol.h"
