// AcGeVector3d.
#pragma once

#include "ge/vector3d.h"
