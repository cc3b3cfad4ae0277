// CString alone.
#pragma once

#include "mfc/string.h"
