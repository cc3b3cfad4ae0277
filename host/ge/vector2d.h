// Vectors of the plane.
#pragma once

#include <cmath>
#include <numbers>

#include "ge/global.h"
#include "ge/tol.h"

class AcGeMatrix2d;
class AcGePoint2d;
class AcGeVector3d;
class AcGePlanarEnt;

/// A displacement in the plane. Angles are in radians.
class AcGeVector2d {
public:
    double x = 0.0;
    double y = 0.0;

    constexpr AcGeVector2d() = default;
    constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

    static const AcGeVector2d kIdentity;
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    friend AcGeVector2d operator*(const AcGeMatrix2d& mat, const AcGeVector2d& vec);
    AcGeVector2d& setToProduct(const AcGeMatrix2d& mat, const AcGeVector2d& vec);
    AcGeVector2d& transformBy(const AcGeMatrix2d& mat);
    AcGeVector2d& rotateBy(double angle);
    AcGeVector2d& mirror(const AcGeVector2d& line);

    constexpr AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    friend constexpr AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
    constexpr AcGeVector2d& operator*=(double s) { return *this = *this * s; }
    AcGeVector2d& setToProduct(const AcGeVector2d& vec, double s) { return *this = vec * s; }
    constexpr AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
    constexpr AcGeVector2d& operator/=(double s) { return *this = *this / s; }

    constexpr AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGeVector2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    AcGeVector2d& setToSum(const AcGeVector2d& a, const AcGeVector2d& b) { return *this = a + b; }
    constexpr AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    constexpr AcGeVector2d operator-() const { return {-x, -y}; }
    constexpr AcGeVector2d& negate() { return *this = -*this; }

    /// The vector turned a quarter counter-clockwise.
    [[nodiscard]] constexpr AcGeVector2d perpVector() const { return {-y, x}; }

    /// Direction from the x axis, in [0, 2 pi).
    [[nodiscard]] double angle() const { return AcGeVector2d(1.0, 0.0).angleToCCW(*this); }
    /// Smallest angle between the two, in [0, pi].
    [[nodiscard]] double angleTo(const AcGeVector2d& vec) const {
        return std::atan2(std::abs(cross(vec)), dotProduct(vec));
    }
    /// Counter-clockwise turn from this to `vec`, in [0, 2 pi).
    [[nodiscard]] double angleToCCW(const AcGeVector2d& vec) const {
        const double turn = std::atan2(cross(vec), dotProduct(vec));
        constexpr double kFull = 2.0 * std::numbers::pi;
        if (turn >= 0.0) return turn;
        // A tiny negative turn plus the full circle rounds to the full circle itself.
        return turn + kFull < kFull ? turn + kFull : 0.0;
    }

    [[nodiscard]] double length() const { return std::sqrt(lengthSqrd()); }
    [[nodiscard]] constexpr double lengthSqrd() const { return x * x + y * y; }

    /// The unit vector of the same direction; a vector without length comes back as it is.
    [[nodiscard]] AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGeVector2d(*this).normalize(tol);
    }
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
        const double size = length();
        return size > tol.equalVector() ? *this /= size : *this;
    }
    AcGeVector2d& normalize(const AcGeTol& tol, AcGeError& flag) {
        flag = isZeroLength(tol) ? AcGe::k0This : AcGe::kOk;
        return normalize(tol);
    }

    [[nodiscard]] Adesk::Boolean isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1.0) <= tol.equalVector();
    }
    [[nodiscard]] Adesk::Boolean isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    [[nodiscard]] Adesk::Boolean isParallelTo(const AcGeVector2d& vec,
                                              const AcGeTol& tol = AcGeContext::gTol) const {
        return isCodirectionalTo(vec, tol) || isCodirectionalTo(-vec, tol);
    }
    Adesk::Boolean isParallelTo(const AcGeVector2d& vec, const AcGeTol& tol,
                                AcGeError& flag) const {
        flag = zeroOperand(vec, tol);
        return flag == AcGe::kOk && isParallelTo(vec, tol);
    }
    [[nodiscard]] Adesk::Boolean isCodirectionalTo(const AcGeVector2d& vec,
                                                   const AcGeTol& tol = AcGeContext::gTol) const {
        if (zeroOperand(vec, tol) != AcGe::kOk) return false;
        return normal(tol).isEqualTo(vec.normal(tol), tol);
    }
    Adesk::Boolean isCodirectionalTo(const AcGeVector2d& vec, const AcGeTol& tol,
                                     AcGeError& flag) const {
        flag = zeroOperand(vec, tol);
        return flag == AcGe::kOk && isCodirectionalTo(vec, tol);
    }
    [[nodiscard]] Adesk::Boolean isPerpendicularTo(const AcGeVector2d& vec,
                                                   const AcGeTol& tol = AcGeContext::gTol) const {
        if (zeroOperand(vec, tol) != AcGe::kOk) return false;
        return std::abs(normal(tol).dotProduct(vec.normal(tol))) <= tol.equalVector();
    }
    Adesk::Boolean isPerpendicularTo(const AcGeVector2d& vec, const AcGeTol& tol,
                                     AcGeError& flag) const {
        flag = zeroOperand(vec, tol);
        return flag == AcGe::kOk && isPerpendicularTo(vec, tol);
    }

    [[nodiscard]] constexpr double dotProduct(const AcGeVector2d& v) const {
        return x * v.x + y * v.y;
    }

    bool operator==(const AcGeVector2d& vec) const { return isEqualTo(vec); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGeVector2d& vec,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - vec).length() <= tol.equalVector();
    }

    double operator[](unsigned int i) const { return i == 0 ? x : y; }
    double& operator[](unsigned int i) { return i == 0 ? x : y; }
    AcGeVector2d& set(double xx, double yy) { return *this = AcGeVector2d(xx, yy); }

    [[nodiscard]] AcGePoint2d asPoint() const;

private:
    [[nodiscard]] constexpr double cross(const AcGeVector2d& v) const { return x * v.y - y * v.x; }
    [[nodiscard]] AcGeError zeroOperand(const AcGeVector2d& vec, const AcGeTol& tol) const {
        if (isZeroLength(tol)) return AcGe::k0This;
        return vec.isZeroLength(tol) ? AcGe::k0Arg1 : AcGe::kOk;
    }
};

inline constexpr AcGeVector2d AcGeVector2d::kIdentity{};
inline constexpr AcGeVector2d AcGeVector2d::kXAxis{1.0, 0.0};
inline constexpr AcGeVector2d AcGeVector2d::kYAxis{0.0, 1.0};

// A vector comes with the points and matrices that its members take.
#include "ge/point2d.h"
