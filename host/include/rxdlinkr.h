// Forwards to the host.
#pragma once
#include "ed/applications.h"
