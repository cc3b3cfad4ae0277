#include "OrnCore/zel_text.h"

#include <dbents.h>

CString ZelText::textString(const AcDbText& text) { return text.textStringConst(); }
