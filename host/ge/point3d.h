// Points of space.
#pragma once

#include <cmath>

#include "ge/tol.h"
#include "ge/vector3d.h"

class AcGePoint2d;

/// A position in space, in drawing units.
class AcGePoint3d {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    AcGePoint3d(const AcGePlanarEnt& pln, const AcGePoint2d& pnt);

    static const AcGePoint3d kOrigin;

    friend AcGePoint3d operator*(const AcGeMatrix3d& mat, const AcGePoint3d& pnt);
    AcGePoint3d& setToProduct(const AcGeMatrix3d& mat, const AcGePoint3d& pnt);
    AcGePoint3d& transformBy(const AcGeMatrix3d& mat);
    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& vec,
                          const AcGePoint3d& wrtPoint = kOrigin);
    AcGePoint3d& mirror(const AcGePlane& pln);
    /// Coordinates on the plane's axes from its origin, dropping the distance from the plane.
    [[nodiscard]] AcGePoint2d convert2d(const AcGePlanarEnt& pln) const;
    AcGePoint3d& scaleBy(double scaleFactor, const AcGePoint3d& wrtPoint = kOrigin);

    constexpr AcGePoint3d operator*(double s) const { return {x * s, y * s, z * s}; }
    friend constexpr AcGePoint3d operator*(double s, const AcGePoint3d& p) { return p * s; }
    constexpr AcGePoint3d& operator*=(double s) { return *this = *this * s; }
    constexpr AcGePoint3d operator/(double s) const { return {x / s, y / s, z / s}; }
    constexpr AcGePoint3d& operator/=(double s) { return *this = *this / s; }

    constexpr AcGePoint3d operator+(const AcGeVector3d& v) const {
        return {x + v.x, y + v.y, z + v.z};
    }
    constexpr AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    constexpr AcGePoint3d operator-(const AcGeVector3d& v) const {
        return {x - v.x, y - v.y, z - v.z};
    }
    constexpr AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    AcGePoint3d& setToSum(const AcGePoint3d& p, const AcGeVector3d& v) { return *this = p + v; }
    constexpr AcGeVector3d operator-(const AcGePoint3d& p) const {
        return {x - p.x, y - p.y, z - p.z};
    }

    [[nodiscard]] constexpr AcGeVector3d asVector() const { return {x, y, z}; }
    /// Foot of the perpendicular on the plane.
    [[nodiscard]] AcGePoint3d orthoProject(const AcGePlane& pln) const;
    /// Where the line through the point along `vec` meets the plane; the point itself when it runs
    /// along the plane.
    [[nodiscard]] AcGePoint3d project(const AcGePlane& pln, const AcGeVector3d& vec) const;
    [[nodiscard]] double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }

    bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGePoint3d& p,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }

    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    constexpr AcGePoint3d& set(double xx, double yy, double zz) {
        return *this = AcGePoint3d(xx, yy, zz);
    }
    AcGePoint3d& set(const AcGePlanarEnt& pln, const AcGePoint2d& pnt);
};

inline constexpr AcGePoint3d AcGePoint3d::kOrigin{};

// A point comes with the matrices that its members take.
#include "ge/matrix3d.h"
