// Forwards to the host.
#pragma once
#include "db/subentity_path.h"
