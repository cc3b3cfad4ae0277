// Forwards to the host.
#pragma once
#include "db/mline_style.h"
