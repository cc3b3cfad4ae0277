// MFC's collections of fixed types.
#pragma once

#include "afx.h"
#include "mfc/array.h"
#include "mfc/list.h"
#include "mfc/map.h"
