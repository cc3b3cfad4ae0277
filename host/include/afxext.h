// MFC's extensions.
#pragma once

#include "afxwin.h"
