// AcGeLine2d.
#pragma once

#include "ge/lines.h"
