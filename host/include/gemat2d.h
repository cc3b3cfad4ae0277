// AcGeMatrix2d.
#pragma once

#include "ge/matrix2d.h"
