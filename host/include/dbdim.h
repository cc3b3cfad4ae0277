// Forwards to the host.
#pragma once
#include "db/dimension.h"
