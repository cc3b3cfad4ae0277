// Forwards to the host.
#pragma once
#include "db/mline.h"
