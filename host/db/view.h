// How a viewport or a named view looks at the drawing.
#pragma once

#include "ge/point2d.h"
#include "ge/point3d.h"
#include "ge/vector3d.h"

namespace headless {

/// Bits of a view's mode, as in files and in the system variable VIEWMODE.
enum ViewMode : short {
    kPerspectiveView = 1,
    kFrontClipOn = 2,
    kBackClipOn = 4,
    kUcsFollowsView = 8,
    kFrontClipNotAtEye = 16
};

/// Lengths are in drawing units, angles in radians. The view's own coordinates (DCS) have their
/// origin at the target, z towards the eye, and x by the arbitrary-axis rule, turned by the twist.
struct View {
    AcGePoint2d center; // of what is seen, in the view's own coordinates
    double height = 1.0;
    AcGePoint3d target;
    AcGeVector3d direction = AcGeVector3d::kZAxis; // from the target to the eye, not of unit length
    double twist = 0.0;                            // turns the picture counter-clockwise
    double lensLength = 50.0;
    double frontClip = 0.0; // distance of the plane from the target, positive towards the eye
    double backClip = 0.0;
    short mode = 0; // ViewMode bits

    bool has(ViewMode bit) const { return (mode & bit) != 0; }
    void set(ViewMode bit, bool on) { mode = static_cast<short>(on ? mode | bit : mode & ~bit); }
};

/// Gives a view as read a height and a direction where it has none.
inline void makeUsable(View& view) {
    if (!(view.height > 0.0)) view.height = 1.0;
    if (view.direction.isZeroLength()) view.direction = AcGeVector3d::kZAxis;
}

} // namespace headless
