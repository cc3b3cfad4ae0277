// What a transform does to flat entities: to their normals, angles, heights and thickness.
#pragma once

#include "db/dxf_fields.h"

namespace headless {

/// A transform as a flat entity with a given normal sees it.
class FlatTransform {
public:
    FlatTransform(const AcGeMatrix3d& transform, const AcGeVector3d& normal);

    /// True when circles of the entity's plane stay circles.
    bool keepsCircles() const { return keepsCircles_; }
    /// The normal afterwards: with it the plane's turning sense is the same as before, so that
    /// bulges and arcs keep theirs.
    const AcGeVector3d& normal() const { return normal_; }
    /// By how much lengths along the plane's x axis and along the normal grow.
    double scale() const { return scale_; }
    double normalScale() const { return normalScale_; }
    /// A direction's angle in the object coordinate system, before to afterwards: what does not
    /// turn keeps its angle to the last digit.
    double angle(double before) const;
    /// Object coordinates before to object coordinates afterwards.
    const AcGeMatrix3d& local() const { return local_; }

private:
    AcGeMatrix3d local_;
    AcGeVector3d normal_;
    double scale_;
    double normalScale_;
    bool keepsCircles_;
    bool turns_;
};

} // namespace headless
