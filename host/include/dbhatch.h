// Forwards to the host.
#pragma once
#include "db/hatch.h"
