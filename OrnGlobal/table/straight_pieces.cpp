#include "table/straight_pieces.h"

#include <dbcurve.h>
#include <dbents.h>
#include <dbpl.h>

namespace table {
namespace {

bool isPolyline(const AcDbEntity& entity) {
    return AcDbPolyline::cast(&entity) != nullptr || AcDb2dPolyline::cast(&entity) != nullptr ||
           AcDb3dPolyline::cast(&entity) != nullptr;
}

} // namespace

std::vector<Ruling> straightPieces(const AcDbEntity& entity) {
    std::vector<Ruling> lines;
    const auto* const curve = isPolyline(entity) ? AcDbCurve::cast(&entity) : nullptr;
    double count = 0.0; // A polyline's parameter counts its pieces.
    if (curve == nullptr || curve->getEndParam(count) != Acad::eOk) return lines;
    for (double piece = 0.0; piece < count; piece += 1.0) {
        Ruling line;
        if (curve->getPointAtParam(piece, line.start) == Acad::eOk &&
            curve->getPointAtParam(piece + 1.0, line.end) == Acad::eOk)
            lines.push_back(line);
    }
    return lines;
}

} // namespace table
