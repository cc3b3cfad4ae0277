// Forwards to the host.
#pragma once
#include "db/spatial_filter.h"
