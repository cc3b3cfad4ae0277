// Scale factors along the two axes.
#pragma once

#include <cmath>

#include "ge/matrix2d.h"

/// Independent factors of a scaling about the origin.
class AcGeScale2d {
public:
    double sx = 1.0;
    double sy = 1.0;

    static const AcGeScale2d kIdentity;

    constexpr AcGeScale2d() = default;
    constexpr explicit AcGeScale2d(double factor) : sx(factor), sy(factor) {}
    constexpr AcGeScale2d(double xx, double yy) : sx(xx), sy(yy) {}

    constexpr AcGeScale2d operator*(const AcGeScale2d& s) const { return {sx * s.sx, sy * s.sy}; }
    constexpr AcGeScale2d& operator*=(const AcGeScale2d& s) { return *this = *this * s; }
    constexpr AcGeScale2d operator*(double s) const { return *this * AcGeScale2d(s); }
    friend constexpr AcGeScale2d operator*(double s, const AcGeScale2d& scl) { return scl * s; }
    friend constexpr AcGeVector2d operator*(const AcGeScale2d& scl, const AcGeVector2d& v) {
        return {scl.sx * v.x, scl.sy * v.y};
    }
    [[nodiscard]] constexpr AcGeScale2d inverse() const { return {1.0 / sx, 1.0 / sy}; }
    constexpr AcGeScale2d& invert() { return *this = inverse(); }

    [[nodiscard]] Adesk::Boolean isProportional(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(sx - sy) <= tol.equalVector();
    }
    bool operator==(const AcGeScale2d& s) const { return isEqualTo(s); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGeScale2d& s,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(sx - s.sx) <= tol.equalVector() && std::abs(sy - s.sy) <= tol.equalVector();
    }

    double operator[](unsigned int i) const { return i == 0 ? sx : sy; }
    double& operator[](unsigned int i) { return i == 0 ? sx : sy; }
    constexpr AcGeScale2d& set(double xx, double yy) { return *this = AcGeScale2d(xx, yy); }

    void getMatrix(AcGeMatrix2d& mat) const {
        mat.setToIdentity();
        mat.entry[0][0] = sx;
        mat.entry[1][1] = sy;
    }
    /// Takes the lengths of the axes' images under `mat`.
    AcGeScale2d& extractScale(const AcGeMatrix2d& mat) {
        return set((mat * AcGeVector2d::kXAxis).length(), (mat * AcGeVector2d::kYAxis).length());
    }
};

inline constexpr AcGeScale2d AcGeScale2d::kIdentity{};
