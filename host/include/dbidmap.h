// Forwards to the host.
#pragma once
#include "db/id_mapping.h"
