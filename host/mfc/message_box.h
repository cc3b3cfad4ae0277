// MFC's message boxes; the session notes and answers them.
#pragma once

#include "win/constants.h"
#include "win/user.h"

int AfxMessageBox(LPCTSTR text, UINT type = MB_OK, UINT helpId = 0);
/// The text is a string resource; MFC's own "-1" answer when there is none.
int AfxMessageBox(UINT textId, UINT type = MB_OK, UINT helpId = static_cast<UINT>(-1));
