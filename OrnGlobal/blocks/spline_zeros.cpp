#include "blocks/spline_zeros.h"

#include <algorithm>
#include <cmath>

namespace blocks {
namespace {

using Coefficients = std::vector<double>;

/// The coefficients of the piece over [knots[k], knots[k + 1]] as a Bezier polynomial: values of
/// the blossom with the piece's end in place of more and more of its beginning.
Coefficients bezierOf(const NumberSpline& spline, std::size_t k) {
    const auto p = static_cast<std::size_t>(spline.degree);
    const std::vector<double>& knots = spline.knots;
    Coefficients piece;
    for (std::size_t ends = 0; ends <= p; ++ends) {
        Coefficients d(spline.coefficients.begin() + static_cast<std::ptrdiff_t>(k - p),
                       spline.coefficients.begin() + static_cast<std::ptrdiff_t>(k + 1));
        for (std::size_t r = 1; r <= p; ++r) {
            const double argument = r <= ends ? knots[k + 1] : knots[k];
            for (std::size_t i = p; i >= r; --i) {
                const double low = knots[k - p + i];
                const double high = knots[k + i - r + 1];
                const double share = (argument - low) / (high - low);
                d[i] = d[i - 1] + (d[i] - d[i - 1]) * share;
            }
        }
        piece.push_back(d[p]);
    }
    return piece;
}

bool keepsSign(const Coefficients& piece) {
    const auto [least, greatest] = std::ranges::minmax(piece);
    return least > 0.0 || greatest < 0.0;
}

/// Cuts a polynomial in the middle; what it was is afterwards its first half.
Coefficients cutOff(Coefficients& piece) {
    Coefficients second(piece.size());
    for (std::size_t r = 0; r < piece.size(); ++r) {
        second[piece.size() - 1 - r] = piece.back();
        for (std::size_t i = piece.size() - 1; i > r; --i)
            piece[i] = (piece[i] + piece[i - 1]) / 2.0;
    }
    return second;
}

// A polynomial has no zero where its coefficients have one sign, and lies between them: halving
// finds every crossing.
void findZeros(Coefficients piece, double from, double to, double noise,
               std::vector<double>& zeros) {
    if (keepsSign(piece)) return;
    const double middle = (from + to) / 2.0;
    const bool flat = std::ranges::all_of(piece, [&](double c) { return std::abs(c) <= noise; });
    if (flat || middle <= from || middle >= to) {
        if ((piece.front() < 0.0) != (piece.back() < 0.0)) zeros.push_back(middle);
        return;
    }
    Coefficients second = cutOff(piece);
    findZeros(std::move(piece), from, middle, noise, zeros);
    findZeros(std::move(second), middle, to, noise, zeros);
}

} // namespace

std::vector<double> zerosOf(const NumberSpline& spline, double noise) {
    std::vector<double> zeros;
    for (auto k = static_cast<std::size_t>(spline.degree); k < spline.coefficients.size(); ++k) {
        const double from = spline.knots[k];
        const double to = spline.knots[k + 1];
        if (from < to) findZeros(bezierOf(spline, k), from, to, noise, zeros);
    }
    return zeros;
}

} // namespace blocks
