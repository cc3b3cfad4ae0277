// AcArray.
#pragma once

#include "rx/array.h"
