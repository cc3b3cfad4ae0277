// Forwards to the host.
#pragma once
#include "db/object_pointer.h"
