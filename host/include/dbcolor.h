// Forwards to the host.
#pragma once
#include "db/color.h"
