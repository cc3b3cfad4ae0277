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

/// Shows the box, along the view's axes, between two points of the world.
Acad::ErrorStatus zoomWindow(AcDbDatabase& db, const AcGePoint3d& first, const AcGePoint3d& second);
/// Shows a point of the world in the middle. eInvalidInput unless the height, in drawing units, is
/// above 0.
Acad::ErrorStatus zoomCenter(AcDbDatabase& db, const AcGePoint3d& center, double height);

void registerZoom(AcEdCommandStack& commands);

} // namespace headless
