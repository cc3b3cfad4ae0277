// Forwards to the host.
#pragma once
#include "rx/types.h"
