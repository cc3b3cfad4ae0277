// AcGeInterval.
#pragma once

#include "ge/interval.h"
