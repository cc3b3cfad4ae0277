// AcGeEntity2d.
#pragma once

#include "ge/entity.h"
