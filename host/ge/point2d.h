// Points of the plane.
#pragma once

#include <cmath>

#include "ge/tol.h"
#include "ge/vector2d.h"

class AcGeLine2d;

/// A position in the plane, in drawing units.
class AcGePoint2d {
public:
    double x = 0.0;
    double y = 0.0;

    constexpr AcGePoint2d() = default;
    constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

    static const AcGePoint2d kOrigin;

    friend AcGePoint2d operator*(const AcGeMatrix2d& mat, const AcGePoint2d& pnt);
    AcGePoint2d& setToProduct(const AcGeMatrix2d& mat, const AcGePoint2d& pnt);
    AcGePoint2d& transformBy(const AcGeMatrix2d& mat);
    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = kOrigin);
    AcGePoint2d& mirror(const AcGeLine2d& line);
    AcGePoint2d& scaleBy(double scaleFactor, const AcGePoint2d& wrtPoint = kOrigin);

    constexpr AcGePoint2d operator*(double s) const { return {x * s, y * s}; }
    friend constexpr AcGePoint2d operator*(double s, const AcGePoint2d& p) { return p * s; }
    constexpr AcGePoint2d& operator*=(double s) { return *this = *this * s; }
    constexpr AcGePoint2d operator/(double s) const { return {x / s, y / s}; }
    constexpr AcGePoint2d& operator/=(double s) { return *this = *this / s; }

    constexpr AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGePoint2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    constexpr AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGePoint2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    AcGePoint2d& setToSum(const AcGePoint2d& p, const AcGeVector2d& v) { return *this = p + v; }
    constexpr AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }

    [[nodiscard]] constexpr AcGeVector2d asVector() const { return {x, y}; }
    [[nodiscard]] double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }

    bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGePoint2d& p,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }

    double operator[](unsigned int i) const { return i == 0 ? x : y; }
    double& operator[](unsigned int i) { return i == 0 ? x : y; }
    constexpr AcGePoint2d& set(double xx, double yy) { return *this = AcGePoint2d(xx, yy); }
};

inline constexpr AcGePoint2d AcGePoint2d::kOrigin{};

// A point comes with the matrices that its members take.
#include "ge/matrix2d.h"
