#include "frame/auto_set_close_pline_to_top.h"

#include <aced.h>
#include <adslib.h>
#include <dbapserv.h>
#include <dbtrans.h>

#include "OrnCore/zel_dwg.h"
#include "frame/resbuf_chain.h"

namespace {

AcDbTransactionManager& transactions() {
    return *acdbHostApplicationServices()->workingTransactionManager();
}

constexpr int kFlags = 70;
constexpr int kClosed = 1;

} // namespace

AutoSetClosePlineToTop::AutoSetClosePlineToTop() {
    transactions().startTransaction();
    frame::ResbufChain closed(acutBuildList(RTDXF0, L"LWPOLYLINE", kFlags, kClosed, RTNONE));
    ads_name set;
    const int selected = acedSSGet(L"A", nullptr, nullptr, closed.get(), set);
    closed.reset();
    if (selected != RTNORM) return;
    AcDbObjectIdArray ids = CZelDwg::GetObjectids(set);
    acedSSFree(set);
    CZelDwg::SendEntsToTop(ids);
}

AutoSetClosePlineToTop::~AutoSetClosePlineToTop() {
    transactions().queueForGraphicsFlush();
    transactions().endTransaction();
}
