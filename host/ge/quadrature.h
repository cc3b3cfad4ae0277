// Integrals of smooth functions, such as the speed along a curve.
#pragma once

#include <cmath>

namespace headless {

/// Gauss-Legendre rule with ten points over [a, b].
template <class F>
double gaussLegendre(double a, double b, const F& f) {
    constexpr double kNodes[] = {0.14887433898163121088, 0.43339539412924719080,
                                 0.67940956829902440623, 0.86506336668898451073,
                                 0.97390652851717172008};
    constexpr double kWeights[] = {0.29552422471475287017, 0.26926671930999635509,
                                   0.21908636251598204400, 0.14945134915058059315,
                                   0.06667134430868813759};
    const double middle = (a + b) / 2.0;
    const double half = (b - a) / 2.0;
    double sum = 0.0;
    for (int i = 0; i < 5; ++i)
        sum += kWeights[i] * (f(middle - half * kNodes[i]) + f(middle + half * kNodes[i]));
    return sum * half;
}

/// Integral of `f` over [a, b]: halves the range until both halves agree with the whole.
///
/// @param tolerance  error allowed, relative to the integral of the function's absolute value.
/// @param depth      halvings allowed; a kink costs them all and leaves an error of its last range.
template <class F>
double integrate(double a, double b, const F& f, double tolerance = 1e-13, int depth = 40) {
    // A function that is nothing but rounding errors never agrees: without an end to all halvings
    // it would be asked 2^depth times.
    constexpr int kMostHalvings = 2000;
    struct Halving {
        const F& f;
        double allowed;
        int remaining;

        double over(double from, double to, double whole, int left) {
            const double middle = (from + to) / 2.0;
            const double first = gaussLegendre(from, middle, f);
            const double second = gaussLegendre(middle, to, f);
            const bool agreed = std::abs(first + second - whole) <= allowed;
            // Also ends for infinities and NaN, whose difference is never small.
            if (agreed || left == 0 || --remaining <= 0 || !std::isfinite(first + second)) {
                return first + second;
            }
            return over(from, middle, first, left - 1) + over(middle, to, second, left - 1);
        }
    };
    const double whole = gaussLegendre(a, b, f);
    const double size = gaussLegendre(a, b, [&](double x) { return std::abs(f(x)); });
    return Halving{f, tolerance * size, kMostHalvings}.over(a, b, whole, depth);
}

} // namespace headless
