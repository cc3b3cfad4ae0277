// Forwards to the host.
#pragma once
#include "db/solid.h"
