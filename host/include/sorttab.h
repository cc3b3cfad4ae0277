// Forwards to the host.
#pragma once
#include "db/sortents_table.h"
