// Forwards to the host.
#pragma once
#include "db/layout.h"
