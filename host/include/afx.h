// MFC's core: strings, exceptions.
#pragma once

#include "mfc/exception.h"
#include "mfc/string.h"
#include "tchar.h"
#include "windows.h"
