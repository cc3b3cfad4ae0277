// Forwards to the host.
#pragma once
#include "db/ellipse.h"
