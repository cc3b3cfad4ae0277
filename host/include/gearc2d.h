// AcGeCircArc2d.
#pragma once

#include "ge/circ_arc.h"
