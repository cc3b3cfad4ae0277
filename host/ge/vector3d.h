// Vectors of space.
#pragma once

#include <cmath>
#include <numbers>

#include "ge/global.h"
#include "ge/tol.h"

class AcGeMatrix3d;
class AcGePoint3d;
class AcGePlanarEnt;
class AcGePlane;
class AcGeVector2d;

/// A displacement in space. Angles are in radians.
class AcGeVector3d {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    AcGeVector3d(const AcGePlanarEnt& pln, const AcGeVector2d& vec);

    static const AcGeVector3d kIdentity;
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    friend AcGeVector3d operator*(const AcGeMatrix3d& mat, const AcGeVector3d& vec);
    AcGeVector3d& setToProduct(const AcGeMatrix3d& mat, const AcGeVector3d& vec);
    AcGeVector3d& transformBy(const AcGeMatrix3d& mat);
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    /// Mirrors in a plane through the origin with this normal.
    AcGeVector3d& mirror(const AcGeVector3d& normalToPlane);

    /// Coordinates on the plane's axes, dropping the part along its normal.
    [[nodiscard]] AcGeVector2d convert2d(const AcGePlanarEnt& pln) const;

    constexpr AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    friend constexpr AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
    constexpr AcGeVector3d& operator*=(double s) { return *this = *this * s; }
    AcGeVector3d& setToProduct(const AcGeVector3d& vec, double s) { return *this = vec * s; }
    constexpr AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    constexpr AcGeVector3d& operator/=(double s) { return *this = *this / s; }

    constexpr AcGeVector3d operator+(const AcGeVector3d& v) const {
        return {x + v.x, y + v.y, z + v.z};
    }
    constexpr AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGeVector3d& setToSum(const AcGeVector3d& a, const AcGeVector3d& b) { return *this = a + b; }
    constexpr AcGeVector3d operator-(const AcGeVector3d& v) const {
        return {x - v.x, y - v.y, z - v.z};
    }
    constexpr AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    constexpr AcGeVector3d operator-() const { return {-x, -y, -z}; }
    constexpr AcGeVector3d& negate() { return *this = -*this; }

    /// A unit vector perpendicular to this: the x axis of the object coordinate system it is the
    /// normal of.
    [[nodiscard]] AcGeVector3d perpVector() const;

    /// Smallest angle between the two, in [0, pi].
    [[nodiscard]] double angleTo(const AcGeVector3d& vec) const {
        return std::atan2(crossProduct(vec).length(), dotProduct(vec));
    }
    /// Turn from this to `vec`, counter-clockwise seen from the tip of `refVec`, in [0, 2 pi).
    [[nodiscard]] double angleTo(const AcGeVector3d& vec, const AcGeVector3d& refVec) const {
        const AcGeVector3d cross = crossProduct(vec);
        constexpr double kFull = 2.0 * std::numbers::pi;
        const double angle = std::atan2(cross.length(), dotProduct(vec));
        if (cross.dotProduct(refVec) >= 0.0) return angle;
        // A tiny turn subtracted from the full circle leaves the full circle.
        return kFull - angle < kFull ? kFull - angle : 0.0;
    }
    /// Angle of the vector's projection from the plane's x axis, in [0, 2 pi).
    [[nodiscard]] double angleOnPlane(const AcGePlanarEnt& pln) const;

    /// The part of the vector within the plane.
    [[nodiscard]] AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal, const AcGeTol& tol,
                              AcGeError& flag) const;
    /// Moves the vector's tip along `projectDirection` into the plane through the origin.
    [[nodiscard]] AcGeVector3d project(const AcGeVector3d& planeNormal,
                                       const AcGeVector3d& projectDirection) const;
    AcGeVector3d project(const AcGeVector3d& planeNormal, const AcGeVector3d& projectDirection,
                         const AcGeTol& tol, AcGeError& flag) const;

    [[nodiscard]] double length() const { return std::sqrt(lengthSqrd()); }
    [[nodiscard]] constexpr double lengthSqrd() const { return x * x + y * y + z * z; }

    /// The unit vector of the same direction; a vector without length comes back as it is.
    [[nodiscard]] AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGeVector3d(*this).normalize(tol);
    }
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
        const double size = length();
        return size > tol.equalVector() ? *this /= size : *this;
    }
    AcGeVector3d& normalize(const AcGeTol& tol, AcGeError& flag) {
        flag = isZeroLength(tol) ? AcGe::k0This : AcGe::kOk;
        return normalize(tol);
    }

    [[nodiscard]] Adesk::Boolean isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1.0) <= tol.equalVector();
    }
    [[nodiscard]] Adesk::Boolean isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return length() <= tol.equalVector();
    }
    [[nodiscard]] Adesk::Boolean isParallelTo(const AcGeVector3d& vec,
                                              const AcGeTol& tol = AcGeContext::gTol) const {
        return isCodirectionalTo(vec, tol) || isCodirectionalTo(-vec, tol);
    }
    Adesk::Boolean isParallelTo(const AcGeVector3d& vec, const AcGeTol& tol,
                                AcGeError& flag) const {
        flag = zeroOperand(vec, tol);
        return flag == AcGe::kOk && isParallelTo(vec, tol);
    }
    [[nodiscard]] Adesk::Boolean isCodirectionalTo(const AcGeVector3d& vec,
                                                   const AcGeTol& tol = AcGeContext::gTol) const {
        if (zeroOperand(vec, tol) != AcGe::kOk) return false;
        return normal(tol).isEqualTo(vec.normal(tol), tol);
    }
    Adesk::Boolean isCodirectionalTo(const AcGeVector3d& vec, const AcGeTol& tol,
                                     AcGeError& flag) const {
        flag = zeroOperand(vec, tol);
        return flag == AcGe::kOk && isCodirectionalTo(vec, tol);
    }
    [[nodiscard]] Adesk::Boolean isPerpendicularTo(const AcGeVector3d& vec,
                                                   const AcGeTol& tol = AcGeContext::gTol) const {
        if (zeroOperand(vec, tol) != AcGe::kOk) return false;
        return std::abs(normal(tol).dotProduct(vec.normal(tol))) <= tol.equalVector();
    }
    Adesk::Boolean isPerpendicularTo(const AcGeVector3d& vec, const AcGeTol& tol,
                                     AcGeError& flag) const {
        flag = zeroOperand(vec, tol);
        return flag == AcGe::kOk && isPerpendicularTo(vec, tol);
    }

    [[nodiscard]] constexpr double dotProduct(const AcGeVector3d& v) const {
        return x * v.x + y * v.y + z * v.z;
    }
    [[nodiscard]] constexpr AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    /// The rotation matrix that turns this direction into `vec`'s about their common normal.
    [[nodiscard]] AcGeMatrix3d rotationTo(const AcGeVector3d& vec,
                                          const AcGeVector3d& axis = kIdentity) const;

    bool operator==(const AcGeVector3d& vec) const { return isEqualTo(vec); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGeVector3d& vec,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - vec).length() <= tol.equalVector();
    }

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    AcGeVector3d& set(double xx, double yy, double zz) { return *this = AcGeVector3d(xx, yy, zz); }
    AcGeVector3d& set(const AcGePlanarEnt& pln, const AcGeVector2d& vec);

    [[nodiscard]] AcGePoint3d asPoint() const;
    /// Index of the coordinate of largest size.
    [[nodiscard]] unsigned int largestElement() const;

private:
    [[nodiscard]] AcGeError zeroOperand(const AcGeVector3d& vec, const AcGeTol& tol) const {
        if (isZeroLength(tol)) return AcGe::k0This;
        return vec.isZeroLength(tol) ? AcGe::k0Arg1 : AcGe::kOk;
    }
};

inline constexpr AcGeVector3d AcGeVector3d::kIdentity{};
inline constexpr AcGeVector3d AcGeVector3d::kXAxis{1.0, 0.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kYAxis{0.0, 1.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kZAxis{0.0, 0.0, 1.0};

// A vector comes with the points and matrices that its members take.
#include "ge/point3d.h"
