// Affine maps of space as 4 x 4 matrices over column vectors.
#pragma once

#include "ge/matrix2d.h"
#include "ge/point3d.h"

class AcGeLine3d;
class AcGePlane;

/// entry[row][column]; the last column holds the translation, the last row is 0 0 0 1.
class AcGeMatrix3d {
public:
    double entry[4][4] = {
        {1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}};

    static const AcGeMatrix3d kIdentity;

    constexpr AcGeMatrix3d() = default;
    AcGeMatrix3d& setToIdentity() { return *this = AcGeMatrix3d(); }

    AcGeMatrix3d operator*(const AcGeMatrix3d& mat) const;
    AcGeMatrix3d& operator*=(const AcGeMatrix3d& mat) { return *this = *this * mat; }
    AcGeMatrix3d& preMultBy(const AcGeMatrix3d& left) { return *this = left * *this; }
    AcGeMatrix3d& postMultBy(const AcGeMatrix3d& right) { return *this = *this * right; }
    AcGeMatrix3d& setToProduct(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
        return *this = a * b;
    }

    /// Inverts in place; a singular matrix stays as it is.
    AcGeMatrix3d& invert();
    [[nodiscard]] AcGeMatrix3d inverse() const { return AcGeMatrix3d(*this).invert(); }
    /// Inverts unless singular; false, and `inv` untouched, when the matrix is singular.
    Adesk::Boolean inverse(AcGeMatrix3d& inv, const AcGeTol& tol = AcGeContext::gTol) const;
    /// True when the images of the axes are dependent, whatever their lengths.
    [[nodiscard]] Adesk::Boolean isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix3d& transposeIt();
    [[nodiscard]] AcGeMatrix3d transpose() const { return AcGeMatrix3d(*this).transposeIt(); }

    bool operator==(const AcGeMatrix3d& mat) const { return isEqualTo(mat); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGeMatrix3d& mat,
                                           const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] double det() const;
    /// Length of the longest image of the three unit axes.
    [[nodiscard]] double scale() const;

    AcGeMatrix3d& setTranslation(const AcGeVector3d& vec);
    [[nodiscard]] AcGeVector3d translation() const {
        return {entry[0][3], entry[1][3], entry[2][3]};
    }

    AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                 const AcGeVector3d& yAxis, const AcGeVector3d& zAxis);
    void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                        AcGeVector3d& zAxis) const;

    AcGeMatrix3d& setToTranslation(const AcGeVector3d& vec);
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToScaling(double scaleAll, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    AcGeMatrix3d& setToMirroring(const AcGePlane& pln);
    AcGeMatrix3d& setToMirroring(const AcGePoint3d& pnt);
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    /// Projection onto the plane along `projectDir`; identity when that runs along the plane.
    AcGeMatrix3d& setToProjection(const AcGePlane& projectionPlane, const AcGeVector3d& projectDir);
    /// The map that takes one coordinate system onto another.
    AcGeMatrix3d& setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                     const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                     const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                     const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
    /// Between world coordinates and the object coordinate system of a normal, or of a plane.
    AcGeMatrix3d& setToWorldToPlane(const AcGeVector3d& normal);
    AcGeMatrix3d& setToWorldToPlane(const AcGePlane& plane);
    AcGeMatrix3d& setToPlaneToWorld(const AcGeVector3d& normal);
    AcGeMatrix3d& setToPlaneToWorld(const AcGePlane& plane);

    static AcGeMatrix3d translation(const AcGeVector3d& vec);
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(double scaleAll, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d mirroring(const AcGePlane& pln);
    static AcGeMatrix3d mirroring(const AcGePoint3d& pnt);
    static AcGeMatrix3d mirroring(const AcGeLine3d& line);
    static AcGeMatrix3d projection(const AcGePlane& projectionPlane,
                                   const AcGeVector3d& projectDir);
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                      const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                      const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                      const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis);
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);
    static AcGeMatrix3d worldToPlane(const AcGePlane& plane);
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
    static AcGeMatrix3d planeToWorld(const AcGePlane& plane);

    /// The map as seen in the object coordinate system of a flat object.
    ///
    /// @param normal  the object's normal; becomes that of the mapped object.
    /// @param elev    height of the object's plane along the normal; becomes the mapped one.
    /// @return        what the map does to the object's two coordinates.
    AcGeMatrix2d convertToLocal(AcGeVector3d& normal, double& elev) const;

    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }
};

inline constexpr AcGeMatrix3d AcGeMatrix3d::kIdentity{};

// The operations that join points, vectors and matrices, inline for speed.

inline AcGeVector3d operator*(const AcGeMatrix3d& mat, const AcGeVector3d& vec) {
    const auto& m = mat.entry;
    return {m[0][0] * vec.x + m[0][1] * vec.y + m[0][2] * vec.z,
            m[1][0] * vec.x + m[1][1] * vec.y + m[1][2] * vec.z,
            m[2][0] * vec.x + m[2][1] * vec.y + m[2][2] * vec.z};
}

inline AcGePoint3d operator*(const AcGeMatrix3d& mat, const AcGePoint3d& pnt) {
    const auto& m = mat.entry;
    return {m[0][0] * pnt.x + m[0][1] * pnt.y + m[0][2] * pnt.z + m[0][3],
            m[1][0] * pnt.x + m[1][1] * pnt.y + m[1][2] * pnt.z + m[1][3],
            m[2][0] * pnt.x + m[2][1] * pnt.y + m[2][2] * pnt.z + m[2][3]};
}

inline AcGePoint3d AcGeVector3d::asPoint() const { return {x, y, z}; }

inline AcGeVector3d& AcGeVector3d::setToProduct(const AcGeMatrix3d& mat, const AcGeVector3d& vec) {
    return *this = mat * vec;
}
inline AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& mat) {
    return *this = mat * *this;
}
inline AcGePoint3d& AcGePoint3d::setToProduct(const AcGeMatrix3d& mat, const AcGePoint3d& pnt) {
    return *this = mat * pnt;
}
inline AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& mat) {
    return *this = mat * *this;
}
inline AcGePoint3d& AcGePoint3d::scaleBy(double scaleFactor, const AcGePoint3d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint) * scaleFactor;
}
