// Scale factors along the three axes.
#pragma once

#include <cmath>

#include "ge/matrix3d.h"

/// Independent factors of a scaling about the origin.
class AcGeScale3d {
public:
    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
    static const AcGeScale3d kIdentity;

    constexpr AcGeScale3d() = default;
    constexpr explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
    constexpr AcGeScale3d(double xx, double yy, double zz) : sx(xx), sy(yy), sz(zz) {}

    constexpr AcGeScale3d operator*(const AcGeScale3d& s) const {
        return {sx * s.sx, sy * s.sy, sz * s.sz};
    }
    constexpr AcGeScale3d& operator*=(const AcGeScale3d& s) { return *this = *this * s; }
    constexpr AcGeScale3d operator*(double s) const { return *this * AcGeScale3d(s); }
    friend constexpr AcGeScale3d operator*(double s, const AcGeScale3d& scl) { return scl * s; }
    friend constexpr AcGeVector3d operator*(const AcGeScale3d& scl, const AcGeVector3d& v) {
        return {scl.sx * v.x, scl.sy * v.y, scl.sz * v.z};
    }
    [[nodiscard]] constexpr AcGeScale3d inverse() const { return {1.0 / sx, 1.0 / sy, 1.0 / sz}; }
    constexpr AcGeScale3d& invert() { return *this = inverse(); }

    [[nodiscard]] Adesk::Boolean isProportional(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(sx - sy) <= tol.equalVector() && std::abs(sx - sz) <= tol.equalVector();
    }
    bool operator==(const AcGeScale3d& s) const { return isEqualTo(s); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGeScale3d& s,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(sx - s.sx) <= tol.equalVector() &&
               std::abs(sy - s.sy) <= tol.equalVector() && std::abs(sz - s.sz) <= tol.equalVector();
    }

    double operator[](unsigned int i) const { return i == 0 ? sx : i == 1 ? sy : sz; }
    double& operator[](unsigned int i) { return i == 0 ? sx : i == 1 ? sy : sz; }
    constexpr AcGeScale3d& set(double xx, double yy, double zz) {
        return *this = AcGeScale3d(xx, yy, zz);
    }

    void getMatrix(AcGeMatrix3d& mat) const {
        mat.setToIdentity();
        mat.entry[0][0] = sx;
        mat.entry[1][1] = sy;
        mat.entry[2][2] = sz;
    }
    /// Takes the lengths of the axes' images under `mat`.
    AcGeScale3d& extractScale(const AcGeMatrix3d& mat) {
        return set((mat * AcGeVector3d::kXAxis).length(), (mat * AcGeVector3d::kYAxis).length(),
                   (mat * AcGeVector3d::kZAxis).length());
    }
};

inline constexpr AcGeScale3d AcGeScale3d::kIdentity{};
