// Forwards to the host.
#pragma once
#include "db/dxf_code.h"
#include "db/open_mode.h"
#include "rx/error_status.h"
