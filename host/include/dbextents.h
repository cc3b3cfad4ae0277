// Forwards to the host.
#pragma once
#include "db/extents.h"
