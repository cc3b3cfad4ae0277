// The user coordinate system, one for model space and one for paper space.
#pragma once

#include "db/database.h"
#include "ge/matrix3d.h"

namespace headless {

/// From the user coordinates of the space that is current to the world's.
[[nodiscard]] AcGeMatrix3d userToWorld(const AcDbDatabase& db);
[[nodiscard]] bool isWorldUcs(const AcDbDatabase& db);

} // namespace headless

/// eNoDatabase when there is no drawing; so the next.
Acad::ErrorStatus acedGetCurrentUCS(AcGeMatrix3d& matrix);
/// eInvalidInput unless the matrix is a right-handed system of unit vectors.
Acad::ErrorStatus acedSetCurrentUCS(const AcGeMatrix3d& matrix);
