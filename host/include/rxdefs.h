// Forwards to the host.
#pragma once
#include "ed/app_messages.h"
