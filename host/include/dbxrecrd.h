// Forwards to the host.
#pragma once
#include "db/xrecord.h"
