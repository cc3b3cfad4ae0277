// Forwards to the host.
#pragma once
#include "rx/error_status.h"
