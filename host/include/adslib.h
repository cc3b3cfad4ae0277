// Forwards to the host.
#pragma once
#include "db/resbuf.h"
