// Where outlines come from: the entities of a drawing.
#include <dbpl.h>

#include "OrnCore/outline.h"

namespace orncore {

std::vector<OutlineVertex> readOutline(const AcDbPolyline& polyline) {
    const unsigned int count = polyline.numVerts();
    std::vector<OutlineVertex> outline(count);
    for (unsigned int i = 0; i < count; ++i)
        polyline.getPointAt(i, outline[i].point);
    if (polyline.isOnlyLines()) return outline;
    const unsigned int bulges = polyline.isClosed() || count == 0 ? count : count - 1;
    for (unsigned int i = 0; i < bulges; ++i)
        polyline.getBulgeAt(i, outline[i].bulge);
    return outline;
}

} // namespace orncore
