// Forwards to the host.
#pragma once
#include "db/leader.h"
