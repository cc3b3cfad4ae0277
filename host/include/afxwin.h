// MFC as a program includes it.
#pragma once

#include "afx.h"
#include "afxcoll.h"
#include "mfc/extension_module.h"
#include "mfc/message_box.h"
#include "mfc/point.h"
#include "mfc/view.h"
#include "mfc/win_app.h"
