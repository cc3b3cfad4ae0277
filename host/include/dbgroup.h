// Forwards to the host.
#pragma once
#include "db/group.h"
