// Forwards to the host.
#pragma once
#include "db/curve.h"
