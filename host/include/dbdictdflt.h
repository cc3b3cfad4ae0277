// Forwards to the host.
#pragma once
#include "db/dictionary.h"
