#include "frame/auto_revert_view.h"

#include <aced.h>
#include <adslib.h>
#include <geassign.h>

#include "frame/ac_ut_sys_var.h"

namespace {

// Codes of acedTrans.
constexpr short kWorld = 0;
constexpr short kUser = 1;
constexpr short kDisplay = 2;

enum class Meaning { point = 0, displacement = 1 };

/// A variable's value; zero where the host has none.
template <class T>
T read(const wchar_t* name) {
    T value = {};
    AcUtSysVar::getSysVar(name, value);
    return value;
}

AcGePoint3d fromUser(const AcGePoint3d& given, short system, Meaning meaning) {
    resbuf from = {};
    from.restype = RTSHORT;
    from.resval.rint = kUser;
    resbuf to = from;
    to.resval.rint = system;
    AcGePoint3d result = given;
    acedTrans(asDblArray(given), &from, &to, static_cast<int>(meaning), asDblArray(result));
    return result;
}

void takeModes(AcDbViewTableRecord& view) {
    const int modes = read<int>(L"VIEWMODE");
    const auto has = [modes](int bit) { return (modes >> bit & 1) != 0; };
    view.setPerspectiveEnabled(has(0));
    view.setFrontClipEnabled(has(1));
    view.setBackClipEnabled(has(2));
    view.setFrontClipAtEye(!has(4));
}

/// Where the view looks, in the order in which the places depend on each other.
void takePlace(AcDbViewTableRecord& view) {
    const AcGePoint3d center = fromUser(read<AcGePoint3d>(L"VIEWCTR"), kDisplay, Meaning::point);
    view.setCenterPoint(AcGePoint2d(center.x, center.y));
    view.setLensLength(read<double>(L"LENSLENGTH"));
    view.setTarget(fromUser(read<AcGePoint3d>(L"TARGET"), kWorld, Meaning::point));
    const AcGePoint3d direction =
        fromUser(read<AcGePoint3d>(L"VIEWDIR"), kWorld, Meaning::displacement);
    view.setViewDirection(direction.asVector());
}

void takeSize(AcDbViewTableRecord& view) {
    const double height = read<double>(L"VIEWSIZE");
    const AcGePoint2d screen = read<AcGePoint2d>(L"SCREENSIZE");
    view.setHeight(height);
    view.setWidth(screen.y > 0.0 ? screen.x / screen.y * height : 0.0);
    view.setViewTwist(read<double>(L"VIEWTWIST"));
}

void takeClips(AcDbViewTableRecord& view) {
    constexpr int kSheet = 1;
    const bool paper = read<int>(L"TILEMODE") == 0 && read<int>(L"CVPORT") == kSheet;
    view.setIsPaperspaceView(paper);
    view.setFrontClipDistance(paper ? 0.0 : read<double>(L"FRONTZ"));
    view.setBackClipDistance(paper ? 0.0 : read<double>(L"BACKZ"));
}

} // namespace

void AutoRevertView::Record::copyFrom(const Record& other) {
    setPerspectiveEnabled(other.perspectiveEnabled());
    setFrontClipEnabled(other.frontClipEnabled());
    setBackClipEnabled(other.backClipEnabled());
    setFrontClipAtEye(other.frontClipAtEye());
    setCenterPoint(other.centerPoint());
    setLensLength(other.lensLength());
    setTarget(other.target());
    setViewDirection(other.viewDirection());
    setHeight(other.height());
    setWidth(other.width());
    setViewTwist(other.viewTwist());
    setIsPaperspaceView(other.isPaperspaceView());
    setFrontClipDistance(other.frontClipDistance());
    setBackClipDistance(other.backClipDistance());
}

AutoRevertView::AutoRevertView() {
    takeModes(view_);
    takePlace(view_);
    takeSize(view_);
    takeClips(view_);
}

AutoRevertView::~AutoRevertView() { acedSetCurrentView(&view_, nullptr); }
