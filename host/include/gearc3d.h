// AcGeCircArc3d.
#pragma once

#include "ge/circ_arc.h"
