// Comparing measured numbers.
#pragma once

#include <afxwin.h>

/// Comparisons that forgive the rounding of computed lengths. All answer 1 for true, 0 for false;
/// a comparison with a NaN is false.
class AFX_EXT_CLASS CZelMath {
public:
    /// What counts as rounding where a caller names no tolerance, in drawing units.
    static constexpr double kTolerance = 1e-6;

    /// |a - b| <= tol
    static int EqualTo(double a, double b, double tol = kTolerance);
    /// |a| <= tol
    static int IsZero(double a, double tol = kTolerance);
    /// a <= b + tol
    static int EqualLess(double a, double b, double tol = kTolerance);
    /// a >= b - tol
    static int EqualMore(double a, double b, double tol = kTolerance);
    /// a < b - tol
    static int Less(double a, double b, double tol = kTolerance);
    /// a > b + tol
    static int More(double a, double b, double tol = kTolerance);
};
