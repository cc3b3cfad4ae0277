// Forwards to the host.
#pragma once
#include "db/ray.h"
