// Forwards to the host.
#pragma once
#include "rx/object.h"
