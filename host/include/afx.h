// MFC's core: strings, exceptions, files.
#pragma once

#include "mfc/conversion.h"
#include "mfc/diagnostics.h"
#include "mfc/exception.h"
#include "mfc/file.h"
#include "mfc/object.h"
#include "mfc/string.h"
#include "tchar.h"
#include "windows.h"
