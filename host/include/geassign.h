// Forwards to the host.
#pragma once
#include "ed/point_arrays.h"
