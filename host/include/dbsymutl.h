// Forwards to the host.
#pragma once
#include "db/symbol_utilities.h"
