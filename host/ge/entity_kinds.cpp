#include "ge/global.h"

namespace headless {

namespace {

/// The kind above, or the kind itself at the top.
AcGe::EntityId parentOf(AcGe::EntityId kind) noexcept {
    switch (kind) {
    case AcGe::kEntity2d:
    case AcGe::kPointEnt2d:
    case AcGe::kCurve2d:
        return AcGe::kEntity2d;
    case AcGe::kPosition2d:
        return AcGe::kPointEnt2d;
    case AcGe::kLinearEnt2d:
    case AcGe::kCircArc2d:
    case AcGe::kEllipArc2d:
        return AcGe::kCurve2d;
    case AcGe::kLine2d:
    case AcGe::kLineSeg2d:
    case AcGe::kRay2d:
        return AcGe::kLinearEnt2d;
    case AcGe::kEntity3d:
    case AcGe::kPointEnt3d:
    case AcGe::kCurve3d:
    case AcGe::kSurface:
        return AcGe::kEntity3d;
    case AcGe::kPosition3d:
        return AcGe::kPointEnt3d;
    case AcGe::kLinearEnt3d:
    case AcGe::kCircArc3d:
    case AcGe::kEllipArc3d:
        return AcGe::kCurve3d;
    case AcGe::kLine3d:
    case AcGe::kLineSeg3d:
    case AcGe::kRay3d:
        return AcGe::kLinearEnt3d;
    case AcGe::kPlanarEnt:
        return AcGe::kSurface;
    case AcGe::kPlane:
        return AcGe::kPlanarEnt;
    }
    return kind;
}

} // namespace

bool isKindOf(AcGe::EntityId kind, AcGe::EntityId ancestor) noexcept {
    while (kind != ancestor) {
        const AcGe::EntityId parent = parentOf(kind);
        if (parent == kind) return false;
        kind = parent;
    }
    return true;
}

} // namespace headless
