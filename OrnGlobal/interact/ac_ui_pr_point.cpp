#include "interact/ac_ui_pr_point.h"

#include <aced.h>
#include <geassign.h>

#include "frame/ac_ut_sys_var.h"

AcUiPrPoint::AcUiPrPoint(const wchar_t* msg, const wchar_t* keyWords) : AcUiPrBase(msg, keyWords) {}

AcUiPrPoint::AcUiPrPoint(const wchar_t* msg, const wchar_t* keyWords, const AcGePoint3d& basePt)
    : AcUiPrBase(msg, keyWords), basePt_(basePt), useBasePt_(true) {}

AcUiPrPoint::~AcUiPrPoint() = default;

AcGePoint3d AcUiPrPoint::basePt() const { return basePt_; }

Acad::ErrorStatus AcUiPrPoint::setBasePt(const AcGePoint3d& point) {
    basePt_ = point;
    return Acad::eOk;
}

Acad::ErrorStatus AcUiPrPoint::setUseBasePt(bool use) {
    useBasePt_ = use;
    return Acad::eOk;
}

Acad::ErrorStatus AcUiPrPoint::setUseDashedLine(bool use) {
    useDashedLine_ = use;
    return Acad::eOk;
}

Acad::ErrorStatus AcUiPrPoint::setNoLimitsCheck(bool none) {
    noLimitsCheck_ = none;
    return Acad::eOk;
}

Acad::ErrorStatus AcUiPrPoint::setAllowNone(bool allow) {
    allowNone_ = allow;
    return Acad::eOk;
}

AcGePoint3d AcUiPrPoint::value() const { return value_; }

int AcUiPrPoint::flags() const {
    return (allowNone_ ? 0 : RSG_NONULL) | (noLimitsCheck_ ? RSG_NOLIM : 0) |
           (useDashedLine_ ? RSG_DASH : 0);
}

int AcUiPrPoint::go() {
    acedInitGet(flags(), keyWords());
    ads_point point = {};
    switch (acedGetPoint(useBasePt_ ? asDblArray(basePt_) : nullptr, promptText(), point)) {
    case RTNORM:
        value_ = asPnt3d(point);
        AcUtSysVar::setSysVar(L"LASTPOINT", value_);
        return kNormal;
    case RTNONE:
        return kNone;
    case RTKWORD:
        return takeKeyWord();
    default:
        return kCancelled;
    }
}
