// What single-line texts of a drawing say.
#pragma once

#include <afxwin.h>

class AcDbText;

class AFX_EXT_CLASS ZelText {
public:
    /// The text as it stands in the drawing, control codes such as %%c included. The entity must be
    /// open for reading.
    static CString textString(const AcDbText& text);
};
