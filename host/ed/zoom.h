// The command ZOOM and what it does.
#pragma once

#include "db/database.h"
#include "db/extents.h"

class AcEdCommandStack;

namespace headless {

/// The box of what the current space shows, in the coordinates of the current view (perspective
/// left aside); entities on frozen layers, invisible and endless ones do not count. Empty when
/// there is nothing.
[[nodiscard]] AcDbExtents displayedExtents(const AcDbDatabase& db);

/// Each changes the current view and answers the status of that.
Acad::ErrorStatus zoomExtents(AcDbDatabase& db);
/// Also shows the limits of the space in a plan view.
Acad::ErrorStatus zoomAll(AcDbDatabase& db);

void registerZoom(AcEdCommandStack& commands);

} // namespace headless
