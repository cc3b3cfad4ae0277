// What an extension module includes beside afxwin.h.
#pragma once

#include "mfc/extension_module.h"
