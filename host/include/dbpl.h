// Forwards to the host.
#pragma once
#include "db/polyline.h"
