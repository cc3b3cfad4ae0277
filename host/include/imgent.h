// Forwards to the host.
#pragma once
#include "db/raster_image.h"
