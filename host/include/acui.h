// Forwards to the host.
#pragma once
#include "ed/dialog_library.h"
