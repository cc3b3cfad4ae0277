// Matchers for points and vectors.
#pragma once

#include <gmock/gmock.h>

#include <ostream>

#include "ge/matrix2d.h"
#include "ge/matrix3d.h"

inline void PrintTo(const AcGePoint2d& p, std::ostream* out) { *out << p.x << ", " << p.y; }
inline void PrintTo(const AcGeVector2d& v, std::ostream* out) { PrintTo(v.asPoint(), out); }
inline void PrintTo(const AcGePoint3d& p, std::ostream* out) {
    *out << p.x << ", " << p.y << ", " << p.z;
}
inline void PrintTo(const AcGeVector3d& v, std::ostream* out) { PrintTo(v.asPoint(), out); }

MATCHER_P2(IsWithin, expected, tolerance, testing::PrintToString(expected)) {
    return (arg - expected).length() <= tolerance;
}

/// Matches points or vectors at most `tolerance` from `expected`.
template <class P>
auto IsNear(const P& expected, double tolerance = 1e-12) {
    return IsWithin(expected, tolerance);
}
