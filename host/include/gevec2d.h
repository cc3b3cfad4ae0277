// AcGeVector2d.
#pragma once

#include "ge/vector2d.h"
