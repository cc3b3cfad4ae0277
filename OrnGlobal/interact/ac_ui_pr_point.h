// Asks for a point, in user coordinates.
#pragma once

#include <gepnt3d.h>

#include "interact/ac_ui_pr_base.h"

class AFX_EXT_CLASS AcUiPrPoint : public AcUiPrBase {
public:
    /// Without a base point.
    AcUiPrPoint(const wchar_t* msg, const wchar_t* keyWords);
    /// With one, from which relative coordinates start and a rubber band is drawn.
    AcUiPrPoint(const wchar_t* msg, const wchar_t* keyWords, const AcGePoint3d& basePt);
    ~AcUiPrPoint() override;

    AcGePoint3d basePt() const;
    /// Does not turn its use on.
    Acad::ErrorStatus setBasePt(const AcGePoint3d& point);
    Acad::ErrorStatus setUseBasePt(bool use);
    Acad::ErrorStatus setUseDashedLine(bool use);
    /// True takes points outside the drawing's limits.
    Acad::ErrorStatus setNoLimitsCheck(bool none);
    /// True makes Enter alone an answer, kNone.
    Acad::ErrorStatus setAllowNone(bool allow);

    /// A point that is given becomes the host's last point, too.
    int go() override;

    AcGePoint3d value() const;

private:
    int flags() const;

    AcGePoint3d value_;
    AcGePoint3d basePt_;
    bool useBasePt_ = false;
    bool useDashedLine_ = false;
    bool noLimitsCheck_ = false;
    bool allowNone_ = false;
};
