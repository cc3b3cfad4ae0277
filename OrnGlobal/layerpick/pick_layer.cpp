#include "layerpick/pick_layer.h"

#include <cmath>
#include <vector>

#include <aced.h>
#include <dbents.h>
#include <dbhatch.h>

#include "OrnCore/zel_dwg.h"
#include "frame/object_handle.h"
#include "frame/resbuf_chain.h"
#include "layerpick/block_search.h"
#include "layerpick/layer_of.h"
#include "layerpick/pick_aperture.h"

namespace {

using layerpick::PickMode;

PickMode modeOf(int pickMode) {
    return pickMode == 1 || pickMode == 2 ? static_cast<PickMode>(pickMode) : PickMode::everything;
}

/// The octagon through the corners of the pick square, closed by its first point.
frame::ResbufChain octagonAround(const AcGePoint3d& point) {
    const double half = layerpick::pickAperture() * 0.5;
    const double radius = std::hypot(half, half);
    const AcGeVector3d corners[] = {{-half, half, 0.0},  {0.0, radius, 0.0},  {half, half, 0.0},
                                    {radius, 0.0, 0.0},  {half, -half, 0.0},  {0.0, -radius, 0.0},
                                    {-half, -half, 0.0}, {-radius, 0.0, 0.0}, {-half, half, 0.0}};
    frame::ResbufChain chain;
    for (const AcGeVector3d& corner : corners) {
        resbuf* const next = acutNewRb(RT3DPOINT);
        next->resval.rpoint[0] = point.x + corner.x;
        next->resval.rpoint[1] = point.y + corner.y;
        next->rbnext = chain.release();
        chain.reset(next);
    }
    return chain;
}

/// What lies in or across the octagon, the newest first.
AcDbObjectIdArray entitiesAt(const AcGePoint3d& point) {
    const frame::ResbufChain outline = octagonAround(point);
    ads_name set;
    if (acedSSGet(L"CP", outline.get(), nullptr, nullptr, set) != RTNORM)
        return AcDbObjectIdArray();
    AcDbObjectIdArray ids = CZelDwg::GetObjectids(set);
    acedSSFree(set);
    return ids;
}

} // namespace

CString kelmor::GetEntLayerByPt(const AcGePoint3d& point, const std::set<CString>& excluded,
                                int descend, int pickMode, int hatches) {
    const AcDbObjectIdArray ids = entitiesAt(point);
    std::vector<AcDbObjectId> references;
    CString firstHatch;
    for (int i = 0; i < ids.length(); ++i) {
        const ReadHandle<AcDbEntity> entity(ids[i]);
        if (!entity) continue;
        if (AcDbHatch::cast(entity.get()) != nullptr) {
            if (firstHatch.IsEmpty()) firstHatch = layerpick::layerOf(*entity);
        } else if (descend == 0 || AcDbBlockReference::cast(entity.get()) == nullptr) {
            return layerpick::layerOf(*entity);
        } else {
            references.push_back(ids[i]);
        }
    }
    for (const AcDbObjectId& id : references) {
        const ReadHandle<AcDbEntity> reference(id);
        const CString layer =
            GetBlockInsideLayerByPt(reference.get(), point, excluded, pickMode, hatches);
        if (!layer.IsEmpty()) return layer;
    }
    return firstHatch;
}

CString kelmor::GetBlockInsideLayerByPt(const AcDbEntity* reference, const AcGePoint3d& point,
                                        const std::set<CString>& excluded, int pickMode,
                                        int hatches) {
    const auto* const block = AcDbBlockReference::cast(reference);
    if (block == nullptr) return CString();
    return layerpick::layerInside(*block, CString(),
                                  {CZelDwg::TransUcs2Wcs(point), layerpick::pickAperture()},
                                  {excluded, modeOf(pickMode), hatches != 0});
}
