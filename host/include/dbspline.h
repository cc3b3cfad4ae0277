// Forwards to the host.
#pragma once
#include "db/spline.h"
