// Names shared by the whole geometry library: entity kinds, error conditions, answers of tests.
#pragma once

#include "rx/types.h"

struct AcGe {
    enum EntityId {
        kEntity2d,
        kEntity3d,
        kPointEnt2d,
        kPointEnt3d,
        kPosition2d,
        kPosition3d,
        kCurve2d,
        kCurve3d,
        kLinearEnt2d,
        kLinearEnt3d,
        kLine2d,
        kLine3d,
        kLineSeg2d,
        kLineSeg3d,
        kRay2d,
        kRay3d,
        kCircArc2d,
        kCircArc3d,
        kEllipArc2d,
        kEllipArc3d,
        kSurface,
        kPlanarEnt,
        kPlane
    };

    enum PointContainment { kInside, kOutside, kOnBoundary };

    /// Names the operand a call could not work with.
    enum ErrorCondition {
        kOk,
        k0This,
        k0Arg1,
        k0Arg2,
        kPerpendicularArg1Arg2,
        kEqualArg1Arg2,
        kEqualArg1Arg3,
        kEqualArg2Arg3,
        kLinearlyDependentArg1Arg2Arg3,
        kArg1TooBig,
        kArg1OnThis,
        kArg1InsideThis
    };
};

using AcGeError = AcGe::ErrorCondition;

namespace headless {

/// True when an entity of kind `kind` is one of kind `ancestor` too.
[[nodiscard]] bool isKindOf(AcGe::EntityId kind, AcGe::EntityId ancestor) noexcept;

} // namespace headless
