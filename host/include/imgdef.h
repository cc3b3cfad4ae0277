// Forwards to the host.
#pragma once
#include "db/raster_image_def.h"
