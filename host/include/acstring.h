// Forwards to the host.
#pragma once
#include "rx/ac_string.h"
