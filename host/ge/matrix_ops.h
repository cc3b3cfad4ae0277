// Steps that the square matrices of both dimensions share.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace headless {

template <std::size_t N>
void multiply(const double (&a)[N][N], const double (&b)[N][N], double (&out)[N][N]) noexcept {
    for (std::size_t row = 0; row < N; ++row) {
        for (std::size_t column = 0; column < N; ++column) {
            double sum = 0.0;
            for (std::size_t k = 0; k < N; ++k)
                sum += a[row][k] * b[k][column];
            out[row][column] = sum;
        }
    }
}

template <std::size_t N>
void transposeInPlace(double (&m)[N][N]) noexcept {
    for (std::size_t row = 0; row < N; ++row)
        for (std::size_t column = 0; column < row; ++column)
            std::swap(m[row][column], m[column][row]);
}

template <std::size_t N>
bool nearlyEqual(const double (&a)[N][N], const double (&b)[N][N], double tolerance) noexcept {
    for (std::size_t row = 0; row < N; ++row)
        for (std::size_t column = 0; column < N; ++column)
            if (!(std::abs(a[row][column] - b[row][column]) <= tolerance)) return false;
    return true;
}

} // namespace headless
