#include "blocks/uneven_scale.h"

#include <cmath>
#include <numbers>
#include <utility>

#include <dbcurve.h>
#include <dbelipse.h>
#include <dbpl.h>

#include "blocks/curve_stretch.h"

namespace blocks {
namespace {

/// A round stretch by its principal axes: turning its parameter by a fixed angle makes any two
/// conjugate half diameters perpendicular. Null for one that is flattened to a line.
std::unique_ptr<AcDbEntity> ellipseOf(const CurveStretch& arc) {
    const AcGeVector3d& u = arc.cosine;
    const AcGeVector3d& v = arc.sine;
    const double turn = std::atan2(2.0 * u.dotProduct(v), u.dotProduct(u) - v.dotProduct(v)) / 2.0;
    const AcGeVector3d major = u * std::cos(turn) + v * std::sin(turn);
    const AcGeVector3d minor = v * std::cos(turn) - u * std::sin(turn);
    if (minor.length() <= 1e-12 * major.length()) return nullptr;
    auto ellipse = std::make_unique<AcDbEllipse>(arc.origin, major.crossProduct(minor).normal(),
                                                 major, minor.length() / major.length());
    const double sweep = arc.rate * (arc.to - arc.from);
    if (sweep < 2.0 * std::numbers::pi) {
        ellipse->setStartParam(-turn);
        ellipse->setEndParam(sweep - turn);
    }
    return ellipse;
}

NewEntities asStretches(const AcDbCurve& curve, const AcGeMatrix3d& transform) {
    NewEntities parts;
    for (const CurveStretch& stretch : stretchesOf(curve)) {
        const CurveStretch moved = stretch.under(transform);
        std::unique_ptr<AcDbEntity> part;
        if (moved.isRound())
            part = ellipseOf(moved);
        else
            part = std::make_unique<AcDbLine>(moved.origin,
                                              moved.origin + moved.along * (moved.to - moved.from));
        if (part == nullptr) continue;
        part->setPropertiesFrom(&curve);
        parts.push_back(std::move(part));
    }
    return parts;
}

bool isOfLinesAndArcs(const AcDbCurve& curve) {
    return curve.isKindOf(AcDbCircle::desc()) || curve.isKindOf(AcDbArc::desc()) ||
           curve.isKindOf(AcDbPolyline::desc()) || curve.isKindOf(AcDb2dPolyline::desc());
}

} // namespace

NewEntities transformed(std::unique_ptr<AcDbEntity> entity, const AcGeMatrix3d& transform) {
    NewEntities parts;
    const Acad::ErrorStatus status = entity->transformBy(transform);
    const auto* const curve = AcDbCurve::cast(entity.get());
    if (status == Acad::eOk)
        parts.push_back(std::move(entity));
    else if (status == Acad::eCannotScaleNonUniformly && curve != nullptr &&
             isOfLinesAndArcs(*curve))
        parts = asStretches(*curve, transform);
    return parts;
}

} // namespace blocks
