#include "blocks/create_ent_in_block_temp.h"

#include <map>

#include <aced.h>
#include <adslib.h>
#include <axlock.h>

#include "OrnCore/zel_dwg.h"
#include "frame/resbuf_chain.h"
#include "layerpick/block_parts.h"
#include "text/string_list.h"

namespace {

AcDbObjectIdArray allReferences() {
    const frame::ResbufChain filter(acutBuildList(RTDXF0, L"INSERT", RTNONE));
    ads_name set;
    if (acedSSGet(L"A", nullptr, nullptr, filter.get(), set) != RTNORM) return AcDbObjectIdArray();
    AcDbObjectIdArray ids = CZelDwg::GetObjectids(set);
    acedSSFree(set);
    return ids;
}

} // namespace

CCreateEntInBlockTemp::CCreateEntInBlockTemp(const CString& layers) : layers_(layers) {
    constexpr int kGrowth = 8;
    made_.ids.setGrowLength(kGrowth);
    const AcAxDocLock lock;
    std::map<CString, AcDbObjectIdArray> byLayer;
    kelmor::CreateBlockEntByLayer(kelmor::splitLongString(layers_, L",", 1, 0), allReferences(),
                                  byLayer, made_.ids, 0);
}
