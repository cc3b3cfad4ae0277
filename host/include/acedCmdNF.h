// Forwards to the host.
#pragma once
#include "ed/command_runner.h"
