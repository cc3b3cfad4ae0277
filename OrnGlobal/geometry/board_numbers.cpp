#include "geometry/board_numbers.h"

#include <algorithm>

#include <aced.h>
#include <adslib.h>
#include <dbents.h>
#include <dbpl.h>

#include "OrnCore/rw_xdata.h"
#include "OrnCore/zel_dwg.h"
#include "frame/object_handle.h"
#include "text/string_list.h"

namespace {

AcGePoint3d numberPoint(const AcDbText& text) {
    const AcGePoint3d kept = rwXData::ReadXdataPnt(text.objectId(), Common::kBoardNumberPoint);
    if (!kept.isEqualTo(AcGePoint3d::kOrigin)) return kept;
    const AcGePoint3d alignment = text.alignmentPoint();
    return alignment.isEqualTo(AcGePoint3d::kOrigin) ? text.position() : alignment;
}

/// An entity open for reading that is no text is left alone.
void eraseInside(const AcDbPolyline* outline, const AcDbObjectId& id) {
    constexpr double kTolerance = 1e-6;
    AcDbText* text = nullptr;
    if (acdbOpenObject(text, id, AcDb::kForRead) != Acad::eOk) return;
    const bool inside = CZelDwg::PtInClosePolygon(outline, numberPoint(*text), kTolerance) >= 0;
    if (inside && text->upgradeOpen() == Acad::eOk) text->erase();
    text->close();
}

bool isOnOneOf(const AcDbObjectId& id, const std::vector<CString>& layers) {
    const ReadHandle<AcDbText> text(id);
    if (!text) return false;
    ACHAR* name = text->layer();
    const CString layer = CString(name).MakeUpper();
    acutDelString(name);
    return std::find(layers.begin(), layers.end(), layer) != layers.end();
}

/// The texts on the layers whose boxes touch the extents.
AcDbObjectIdArray textsAcross(const AcDbExtents& extents, const CString& layers) {
    const AcGePoint3d low = extents.minPoint();
    const AcGePoint3d high = extents.maxPoint();
    const ads_point corner = {low.x, low.y, 0.0};
    const ads_point opposite = {high.x, high.y, 0.0};
    AcDbObjectIdArray ids;
    resbuf* const filter = acutBuildList(8, layers.GetString(), RTNONE);
    ads_name set;
    if (acedSSGet(L"C", corner, opposite, filter, set) == RTNORM) {
        ids = CZelDwg::GetObjectids(set);
        acedSSFree(set);
    }
    acutRelRb(filter);
    return ids;
}

} // namespace

void Common::ClearBoardNumber(const AcDbObjectIdArray& outlines, const CString& layers) {
    const std::vector<CString> names = kelmor::splitLongString(layers, L",", 0, 0);
    for (int i = 0; i < outlines.length(); ++i) {
        const ReadHandle<AcDbEntity> entity(outlines[i]);
        if (!entity) continue;
        const AcDbPolyline* const outline = AcDbPolyline::cast(entity.get());
        const AcDbObjectIdArray members = CZelDwg::GetGroupEntIdsFromOneEntity(outlines[i]);
        if (members.isEmpty()) {
            const AcDbObjectIdArray texts =
                textsAcross(CZelDwg::GetGeomExtents(outlines[i]), layers);
            for (int k = 0; k < texts.length(); ++k)
                eraseInside(outline, texts[k]);
        }
        for (int k = 0; k < members.length(); ++k) {
            if (isOnOneOf(members[k], names)) eraseInside(outline, members[k]);
        }
    }
}
