#include "OrnCore/zel_math.h"

#include <cmath>

int CZelMath::EqualTo(double a, double b, double tol) {
    // Equal infinities have no difference.
    return a == b || std::abs(a - b) <= tol ? 1 : 0;
}

int CZelMath::IsZero(double a, double tol) { return std::abs(a) <= tol ? 1 : 0; }

int CZelMath::EqualLess(double a, double b, double tol) { return a <= b + tol ? 1 : 0; }

int CZelMath::EqualMore(double a, double b, double tol) { return a >= b - tol ? 1 : 0; }

int CZelMath::Less(double a, double b, double tol) { return a < b - tol ? 1 : 0; }

int CZelMath::More(double a, double b, double tol) { return a > b + tol ? 1 : 0; }
