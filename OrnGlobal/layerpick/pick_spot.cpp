#include "layerpick/pick_spot.h"

#include <algorithm>
#include <cmath>

#include <dbpl.h>

#include "OrnCore/zel_dwg.h"

namespace layerpick {

PickSpot carriedInto(const PickSpot& spot, const Placing& placing) {
    const AcGePoint3d unscaled(
        (spot.at.x - placing.position.x) / placing.scale.sx + placing.origin.x,
        (spot.at.y - placing.position.y) / placing.scale.sy + placing.origin.y, placing.origin.z);
    return {CZelDwg::RotatePoint(unscaled, placing.origin, -placing.rotation),
            spot.aperture / std::abs(placing.scale.sx)};
}

void makeSquare(const PickSpot& spot, double rotation, AcDbPolyline& square) {
    const double half = spot.aperture / 2.0;
    const AcGeVector3d corners[] = {
        {-half, half, 0.0}, {half, half, 0.0}, {half, -half, 0.0}, {-half, -half, 0.0}};
    for (const AcGeVector3d& corner : corners) {
        const AcGePoint3d turned = CZelDwg::RotatePoint(spot.at + corner, spot.at, -rotation);
        square.addVertexAt(square.numVerts(), {turned.x, turned.y}, 0.0, -1.0, -1.0);
    }
    square.setClosed(Adesk::kTrue);
}

bool holds(const AcDbExtents& box, const AcGePoint3d& point) {
    // What CZelDwg::PtInClosePolygon answers for the box's corners, without making them points.
    constexpr double kTolerance = 1e-6;
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    const double beyondX = std::max({low.x - point.x, 0.0, point.x - high.x});
    const double beyondY = std::max({low.y - point.y, 0.0, point.y - high.y});
    return beyondX * beyondX + beyondY * beyondY <= kTolerance * kTolerance;
}

} // namespace layerpick
