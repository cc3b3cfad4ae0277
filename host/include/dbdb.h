// Forwards to the host.
#pragma once
#include "db/database.h"
