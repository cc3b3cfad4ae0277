// Forwards to the host.
#pragma once
#include "aced.h"
#include "acutads.h"
#include "db/object_groups.h"
#include "db/xdata.h"
