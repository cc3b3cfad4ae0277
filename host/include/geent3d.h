// AcGeEntity3d.
#pragma once

#include "ge/entity.h"
