// AcGeSurface.
#pragma once

#include "ge/plane.h"
