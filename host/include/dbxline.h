// Forwards to the host.
#pragma once
#include "db/xline.h"
