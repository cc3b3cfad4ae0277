// Affine maps of the plane as 3 x 3 matrices over column vectors.
#pragma once

#include "ge/point2d.h"

class AcGeLine2d;

/// entry[row][column]; the last column holds the translation.
class AcGeMatrix2d {
public:
    double entry[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};

    static const AcGeMatrix2d kIdentity;

    constexpr AcGeMatrix2d() = default;
    AcGeMatrix2d& setToIdentity() { return *this = AcGeMatrix2d(); }

    AcGeMatrix2d operator*(const AcGeMatrix2d& mat) const;
    AcGeMatrix2d& operator*=(const AcGeMatrix2d& mat) { return *this = *this * mat; }
    AcGeMatrix2d& preMultBy(const AcGeMatrix2d& left) { return *this = left * *this; }
    AcGeMatrix2d& postMultBy(const AcGeMatrix2d& right) { return *this = *this * right; }
    AcGeMatrix2d& setToProduct(const AcGeMatrix2d& a, const AcGeMatrix2d& b) {
        return *this = a * b;
    }

    /// Inverts in place; a singular matrix stays as it is.
    AcGeMatrix2d& invert();
    [[nodiscard]] AcGeMatrix2d inverse() const { return AcGeMatrix2d(*this).invert(); }
    [[nodiscard]] Adesk::Boolean isSingular(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeMatrix2d& transposeIt();
    [[nodiscard]] AcGeMatrix2d transpose() const { return AcGeMatrix2d(*this).transposeIt(); }

    bool operator==(const AcGeMatrix2d& mat) const { return isEqualTo(mat); }
    [[nodiscard]] Adesk::Boolean isEqualTo(const AcGeMatrix2d& mat,
                                           const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    [[nodiscard]] Adesk::Boolean isScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
    /// Length of the longer image of the two unit axes.
    [[nodiscard]] double scale() const;
    [[nodiscard]] double det() const;

    AcGeMatrix2d& setTranslation(const AcGeVector2d& vec);
    [[nodiscard]] AcGeVector2d translation() const { return {entry[0][2], entry[1][2]}; }

    AcGeMatrix2d& setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0,
                                 const AcGeVector2d& e1);
    void getCoordSystem(AcGePoint2d& origin, AcGeVector2d& e0, AcGeVector2d& e1) const;

    AcGeMatrix2d& setToTranslation(const AcGeVector2d& vec);
    AcGeMatrix2d& setToRotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToScaling(double scaleAll, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    AcGeMatrix2d& setToMirroring(const AcGePoint2d& pnt);
    AcGeMatrix2d& setToMirroring(const AcGeLine2d& line);
    /// The map that takes one coordinate system onto another.
    AcGeMatrix2d& setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0,
                                     const AcGeVector2d& fromE1, const AcGePoint2d& toOrigin,
                                     const AcGeVector2d& toE0, const AcGeVector2d& toE1);

    static AcGeMatrix2d translation(const AcGeVector2d& vec);
    static AcGeMatrix2d rotation(double angle, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    static AcGeMatrix2d scaling(double scaleAll, const AcGePoint2d& center = AcGePoint2d::kOrigin);
    static AcGeMatrix2d mirroring(const AcGePoint2d& pnt);
    static AcGeMatrix2d mirroring(const AcGeLine2d& line);
    static AcGeMatrix2d alignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0,
                                      const AcGeVector2d& fromE1, const AcGePoint2d& toOrigin,
                                      const AcGeVector2d& toE0, const AcGeVector2d& toE1);

    double operator()(unsigned int row, unsigned int column) const { return entry[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return entry[row][column]; }
};

inline constexpr AcGeMatrix2d AcGeMatrix2d::kIdentity{};

// The operations that join points, vectors and matrices, inline for speed.

inline AcGeVector2d operator*(const AcGeMatrix2d& mat, const AcGeVector2d& vec) {
    const auto& m = mat.entry;
    return {m[0][0] * vec.x + m[0][1] * vec.y, m[1][0] * vec.x + m[1][1] * vec.y};
}

inline AcGePoint2d operator*(const AcGeMatrix2d& mat, const AcGePoint2d& pnt) {
    const auto& m = mat.entry;
    return {m[0][0] * pnt.x + m[0][1] * pnt.y + m[0][2],
            m[1][0] * pnt.x + m[1][1] * pnt.y + m[1][2]};
}

inline AcGePoint2d AcGeVector2d::asPoint() const { return {x, y}; }

inline AcGeVector2d& AcGeVector2d::setToProduct(const AcGeMatrix2d& mat, const AcGeVector2d& vec) {
    return *this = mat * vec;
}
inline AcGeVector2d& AcGeVector2d::transformBy(const AcGeMatrix2d& mat) {
    return *this = mat * *this;
}
inline AcGePoint2d& AcGePoint2d::setToProduct(const AcGeMatrix2d& mat, const AcGePoint2d& pnt) {
    return *this = mat * pnt;
}
inline AcGePoint2d& AcGePoint2d::transformBy(const AcGeMatrix2d& mat) {
    return *this = mat * *this;
}
inline AcGePoint2d& AcGePoint2d::scaleBy(double scaleFactor, const AcGePoint2d& wrtPoint) {
    return *this = wrtPoint + (*this - wrtPoint) * scaleFactor;
}
