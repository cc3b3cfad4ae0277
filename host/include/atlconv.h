// Short-lived text conversions.
#pragma once

#include "mfc/conversion.h"
#include "win/types.h"
