// Forwards to the host.
#pragma once
#include "ed/commands.h"
