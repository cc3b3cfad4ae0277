// Forwards to the host.
#pragma once
#include "db/trace.h"
