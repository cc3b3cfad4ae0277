// Forwards to the host.
#pragma once
#include "ed/coordinate_calls.h"
