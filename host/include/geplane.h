// AcGePlane.
#pragma once

#include "ge/plane.h"
