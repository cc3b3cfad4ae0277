#include "blocks/clip_entity.h"

#include <algorithm>
#include <cmath>

#include <dbcurve.h>
#include <dblead.h>
#include <dbpl.h>

#include "blocks/clip_crossings.h"
#include "blocks/curve_stretch.h"

namespace blocks {
namespace {

bool showsAt(const AcDbCurve& curve, double param, const ClipBoundary& clip) {
    AcGePoint3d point;
    return curve.getPointAtParam(param, point) == Acad::eOk && shows(clip, point);
}

/// The crossings at which what is shown begins or ends. Stretches too short to hold a line do not
/// count: at a corner two edges are crossed at once.
AcGeDoubleArray changes(const AcDbCurve& curve, const ClipBoundary& clip) {
    const ParamRange range(curve);
    std::vector<double> ends = crossings(curve, clip);
    ends.push_back(range.to);
    AcGeDoubleArray cuts;
    double from = range.from;
    int shown = -1;
    for (const double to : ends) {
        if (std::isfinite(to) && std::isfinite(from) &&
            to - from <= 1e-12 * std::max({1.0, std::abs(from), std::abs(to)}))
            continue;
        const int isShown = showsAt(curve, ParamRange::between(from, to), clip) ? 1 : 0;
        if (shown >= 0 && isShown != shown) cuts.append(from);
        shown = isShown;
        from = to;
    }
    // A closed curve is cut at its start, too, when that is where a part ends.
    const bool startShown = showsAt(curve, ParamRange::between(range.from, ends.front()), clip);
    if (curve.isClosed() && startShown != (shown == 1)) cuts.append(range.from);
    return cuts;
}

/// True for a curve of which all is shown, but for single points; false when none is.
bool isShown(const AcDbCurve& curve, const ClipBoundary& clip) {
    const ParamRange range(curve);
    std::vector<double> ends = crossings(curve, clip);
    ends.push_back(range.to);
    // The longest stretch is the surest not to be hidden by rounding.
    double from = range.from;
    double longest = 0.0;
    double within = ParamRange::between(range.from, range.to);
    for (const double to : ends) {
        if (to - from > longest) {
            longest = to - from;
            within = ParamRange::between(from, to);
        }
        from = to;
    }
    return showsAt(curve, within, clip);
}

NewEntities shownPartsOf(const AcDbCurve& curve, const AcGeDoubleArray& cuts,
                         const ClipBoundary& clip) {
    NewEntities parts;
    AcDbVoidPtrArray made;
    curve.getSplitCurves(cuts, made);
    for (int i = 0; i < made.length(); ++i) {
        std::unique_ptr<AcDbCurve> part(static_cast<AcDbCurve*>(made[i]));
        if (isShown(*part, clip)) parts.push_back(std::move(part));
    }
    return parts;
}

/// Fills in the outline of a box seen from above.
void outlineOf(const AcDbExtents& box, AcDbPolyline& outline) {
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    outline.addVertexAt(0, {low.x, low.y});
    outline.addVertexAt(1, {high.x, low.y});
    outline.addVertexAt(2, {high.x, high.y});
    outline.addVertexAt(3, {low.x, high.y});
    outline.setClosed(true);
    outline.setElevation((low.z + high.z) / 2.0);
}

bool holds(const AcDbExtents& box, const AcGePoint3d& point) {
    return point.x >= box.minPoint().x && point.x <= box.maxPoint().x &&
           point.y >= box.minPoint().y && point.y <= box.maxPoint().y;
}

/// True when some of an entity's box is shown; what has no box is.
bool showsBoxOf(const AcDbEntity& entity, const ClipBoundary& clip) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return true;
    box.transformBy(clip.toClipSpace);
    AcDbPolyline outline;
    outlineOf(box, outline);
    ClipBoundary flat = clip;
    flat.toClipSpace.setToIdentity();
    if (changes(outline, flat).length() > 0 || showsAt(outline, 0.5, flat)) return true;
    // None of the outline is shown: the box lies beside the polygon or around it.
    return !clip.inverted && !clip.corners.empty() && holds(box, clip.corners.front());
}

} // namespace

NewEntities shownParts(std::unique_ptr<AcDbEntity> entity, const ClipBoundary& clip) {
    NewEntities parts;
    auto* const curve = AcDbCurve::cast(entity.get());
    if (curve == nullptr || curve->isKindOf(AcDbLeader::desc())) {
        if (showsBoxOf(*entity, clip)) parts.push_back(std::move(entity));
        return parts;
    }
    const AcGeDoubleArray cuts = changes(*curve, clip);
    if (!cuts.isEmpty()) return shownPartsOf(*curve, cuts, clip);
    if (isShown(*curve, clip)) parts.push_back(std::move(entity));
    return parts;
}

} // namespace blocks
