// Forwards to the host.
#pragma once
#include "db/mtext.h"
