// How a single line of text is drawn.
#pragma once

#include <dbid.h>

struct TextInfo {
    AcDbObjectId style = {};  // null: the style that texts have unless told otherwise
    double widthFactor = 1.0; // 0 counts as 1
    double height = 0.0;      // drawing units; text without height has no width
};
