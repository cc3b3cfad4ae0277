// AcGeRay3d.
#pragma once

#include "ge/lines.h"
