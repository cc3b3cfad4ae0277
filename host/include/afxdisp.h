// MFC's automation.
#pragma once

#include "afxwin.h"
#include "mfc/dispatch_driver.h"
#include "mfc/ole_exception.h"
#include "mfc/ole_variant.h"
#include "oleauto.h"
