// The platform's named arrays of numbers, points and vectors.
#pragma once

#include "ge/point2d.h"
#include "ge/point3d.h"
#include "ge/vector2d.h"
#include "ge/vector3d.h"
#include "rx/array.h"

using AcGeIntArray = AcArray<int>;
using AcGeDoubleArray = AcArray<double>;
using AcGeVoidPointerArray = AcArray<void*>;
using AcGePoint2dArray = AcArray<AcGePoint2d>;
using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGeVector2dArray = AcArray<AcGeVector2d>;
using AcGeVector3dArray = AcArray<AcGeVector3d>;
