// LineTools: how entities look, and the box around them.
#include <dbents.h>
#include <dbpl.h>

#include "OrnCore/zel_dwg.h"
#include "frame/object_handle.h"
#include "geometry/line_tools.h"

void LineTools::CpoyPLineProperties(const AcDbObjectId& from, const AcDbObjectId& to) {
    const ReadHandle<AcDbPolyline> source(from);
    if (!source) return;
    const WriteHandle<AcDbPolyline> target(to);
    if (!target) return;
    target->setColorIndex(source->colorIndex());
    target->setLayer(source->layerId());
    target->setLinetype(source->linetypeId());
    target->setLinetypeScale(source->linetypeScale());
    target->setLineWeight(source->lineWeight());
    target->setMaterial(source->materialId());
    target->setThickness(source->thickness());
    target->setTransparency(source->transparency());
}

void LineTools::SetLineScale(const AcDbObjectId& id, double scale) {
    if (const WriteHandle<AcDbPolyline> polyline(id); polyline) polyline->setLinetypeScale(scale);
}

void LineTools::setVisibility(const AcDbObjectId& id, bool visible) {
    if (const WriteHandle<AcDbEntity> entity(id); entity)
        entity->setVisibility(visible ? AcDb::kVisible : AcDb::kInvisible);
}

void LineTools::setVisibility(const AcDbObjectIdArray& ids, bool visible) {
    for (int i = 0; i < ids.length(); ++i)
        setVisibility(ids[i], visible);
}

AcGePoint3dArray LineTools::GetEntExtPtAry(const AcDbObjectId& id) {
    AcGePoint3dArray corners;
    const AcDbExtents box = CZelDwg::GetGeomExtents(id);
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    if (low.x > high.x) return corners;
    corners.append(low);
    corners.append(AcGePoint3d(high.x, low.y, low.z));
    corners.append(AcGePoint3d(high.x, high.y, low.z));
    corners.append(AcGePoint3d(low.x, high.y, low.z));
    return corners;
}
