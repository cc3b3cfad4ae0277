#include "layerpick/curve_test.h"

#include <algorithm>
#include <memory>

#include <dbcurve.h>
#include <dbents.h>
#include <dbmline.h>

#include "OrnCore/zel_math.h"
#include "layerpick/parts.h"

namespace layerpick {
namespace {

bool meets(const AcDbEntity& entity, const AcDbPolyline& square) {
    AcGePoint3dArray points;
    return entity.intersectWith(&square, AcDb::kOnBothOperands, points) == Acad::eOk &&
           !points.isEmpty();
}

bool curveMeets(const AcDbCurve& curve, const AcDbPolyline& square) {
    constexpr double kFlat = 1e-12;
    AcGePoint3d start;
    if (curve.getStartPoint(start) != Acad::eOk || CZelMath::IsZero(start.z, kFlat) != 0)
        return meets(curve, square);
    const std::unique_ptr<AcDbCurve> lowered(AcDbCurve::cast(curve.clone()));
    if (lowered == nullptr) return false;
    const AcGeVector3d down(0.0, 0.0, -start.z);
    return lowered->transformBy(AcGeMatrix3d::translation(down)) == Acad::eOk &&
           meets(*lowered, square);
}

} // namespace

bool crosses(const AcDbEntity& entity, const AcDbPolyline& square) {
    if (const auto* const curve = AcDbCurve::cast(&entity)) return curveMeets(*curve, square);
    if (AcDbMline::cast(&entity) == nullptr) return meets(entity, square);
    const auto parts = partsOf(entity);
    return std::any_of(parts.begin(), parts.end(), [&](const auto& part) {
        const auto* const line = AcDbLine::cast(part.get());
        return line != nullptr && curveMeets(*line, square);
    });
}

} // namespace layerpick
