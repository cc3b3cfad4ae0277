// What plane and space geometry have in common, so that curves are written once for both.
#pragma once

#include "ge/arrays.h"
#include "ge/matrix2d.h"
#include "ge/matrix3d.h"

class AcGeEntity2d;
class AcGeEntity3d;
class AcGeCurve2d;
class AcGeCurve3d;
class AcGeLinearEnt2d;
class AcGeLinearEnt3d;
class AcGeLine2d;
class AcGeRay2d;
class AcGeLineSeg2d;
class AcGeLine3d;
class AcGeRay3d;
class AcGeLineSeg3d;

namespace headless {

struct Plane2d {
    using Point = AcGePoint2d;
    using Vector = AcGeVector2d;
    using Matrix = AcGeMatrix2d;
    using PointArray = AcGePoint2dArray;
    using VectorArray = AcGeVector2dArray;
    using Entity = AcGeEntity2d;
    using Curve = AcGeCurve2d;
    using LinearEnt = AcGeLinearEnt2d;
    using Line = AcGeLine2d;
    using Ray = AcGeRay2d;
    using LineSeg = AcGeLineSeg2d;
};

struct Space3d {
    using Point = AcGePoint3d;
    using Vector = AcGeVector3d;
    using Matrix = AcGeMatrix3d;
    using PointArray = AcGePoint3dArray;
    using VectorArray = AcGeVector3dArray;
    using Entity = AcGeEntity3d;
    using Curve = AcGeCurve3d;
    using LinearEnt = AcGeLinearEnt3d;
    using Line = AcGeLine3d;
    using Ray = AcGeRay3d;
    using LineSeg = AcGeLineSeg3d;
};

} // namespace headless
