// Forwards to the host.
#pragma once
#include "db/open_mode.h"
#include "rx/error_status.h"
