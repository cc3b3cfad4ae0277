// Forwards to the host.
#pragma once
#include "db/state.h"
