// Minima of functions of one variable.
#pragma once

#include <cmath>

namespace headless {

/// Where `value` is smallest between a and b, given that it falls and then rises there. The place
/// is as good as the function's own digits allow, about the square root of the last one.
template <class Value>
double goldenMinimum(double a, double b, const Value& value) {
    constexpr double kRatio = 0.6180339887498949;
    double left = b - kRatio * (b - a);
    double right = a + kRatio * (b - a);
    double atLeft = value(left);
    double atRight = value(right);
    while (b - a > 1e-13 * (1.0 + std::abs(a) + std::abs(b))) {
        if (atLeft <= atRight) {
            b = right;
            right = left;
            atRight = atLeft;
            left = b - kRatio * (b - a);
            atLeft = value(left);
        } else {
            a = left;
            left = right;
            atLeft = atRight;
            right = a + kRatio * (b - a);
            atRight = value(right);
        }
        if (!(left > a) || !(right < b)) break;
    }
    return atLeft <= atRight ? left : right;
}

} // namespace headless
