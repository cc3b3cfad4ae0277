// MFC's automation.
#pragma once

#include "afxwin.h"
#include "oleauto.h"
