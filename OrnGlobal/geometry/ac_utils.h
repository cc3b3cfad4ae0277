// Fillets and the order of points along a direction.
#pragma once

#include <afxwin.h>
#include <gepnt2d.h>
#include <gept3dar.h>

class AFX_EXT_CLASS AcUtils {
public:
    /// The arc that rounds a corner: from p1 to p2, at right angles there to the lines from its
    /// centre, which are perpendicular to those towards the corner.
    ///
    /// The bulge comes from the difference of the two directions as they stand in [0, 2 pi).
    /// @return  false, and the results untouched, when p1 and p2 coincide or the corner lies on
    ///          their line.
    static bool getArcBulge(double& bulge, AcGePoint2d& center, const AcGePoint2d& p1,
                            const AcGePoint2d& p2, const AcGePoint2d& corner);

    /// Orders points seen from the first: those off the direction `angle` (by `tol` radians or
    /// more) come first, farthest first, then those along it, nearest first. Equal distances keep
    /// their order.
    static void sortPoints(AcGePoint3dArray& pts, double angle, const double& tol);
};
