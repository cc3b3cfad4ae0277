// AcGeEllipArc3d.
#pragma once

#include "ge/ellip_arc3d.h"
