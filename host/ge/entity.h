// Geometric entities: what lines, arcs and planes share.
#pragma once

#include "ge/dimension.h"
#include "ge/global.h"

namespace headless {

/// The part of an entity that is the same in the plane and in space.
template <class D>
class EntityOf {
public:
    using Point = typename D::Point;
    using Vector = typename D::Vector;
    using Matrix = typename D::Matrix;
    using Entity = typename D::Entity;

    virtual ~EntityOf() = default;

    [[nodiscard]] virtual AcGe::EntityId type() const = 0;
    [[nodiscard]] Adesk::Boolean isKindOf(AcGe::EntityId kind) const {
        return headless::isKindOf(type(), kind);
    }
    /// A copy on the heap that the caller deletes.
    [[nodiscard]] virtual Entity* copy() const = 0;

    [[nodiscard]] Adesk::Boolean isEqualTo(const Entity& other,
                                           const AcGeTol& tol = AcGeContext::gTol) const {
        return type() == other.type() && equals(other, tol);
    }

    Entity& transformBy(const Matrix& mat) {
        apply(mat);
        return static_cast<Entity&>(*this);
    }
    Entity& translateBy(const Vector& vec) { return transformBy(Matrix::translation(vec)); }
    Entity& scaleBy(double factor, const Point& wrtPoint = Point::kOrigin) {
        return transformBy(Matrix::scaling(factor, wrtPoint));
    }

    [[nodiscard]] Adesk::Boolean isOn(const Point& pnt,
                                      const AcGeTol& tol = AcGeContext::gTol) const {
        return holds(pnt, tol);
    }

protected:
    EntityOf() = default;
    EntityOf(const EntityOf&) = default;
    EntityOf& operator=(const EntityOf&) = default;

    virtual void apply(const Matrix& mat) = 0;
    /// `other` is of this entity's own type.
    [[nodiscard]] virtual bool equals(const Entity& other, const AcGeTol& tol) const = 0;
    [[nodiscard]] virtual bool holds(const Point& pnt, const AcGeTol& tol) const = 0;
};

} // namespace headless

class AcGePlane;

class AcGeEntity2d : public headless::EntityOf<headless::Plane2d> {
public:
    bool operator==(const AcGeEntity2d& other) const { return isEqualTo(other); }
    AcGeEntity2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = AcGePoint2d::kOrigin) {
        return transformBy(AcGeMatrix2d::rotation(angle, wrtPoint));
    }
    AcGeEntity2d& mirror(const AcGeLine2d& line) {
        return transformBy(AcGeMatrix2d::mirroring(line));
    }
};

class AcGeEntity3d : public headless::EntityOf<headless::Space3d> {
public:
    bool operator==(const AcGeEntity3d& other) const { return isEqualTo(other); }
    AcGeEntity3d& rotateBy(double angle, const AcGeVector3d& vec,
                           const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin) {
        return transformBy(AcGeMatrix3d::rotation(angle, vec, wrtPoint));
    }
    AcGeEntity3d& mirror(const AcGePlane& plane) {
        return transformBy(AcGeMatrix3d::mirroring(plane));
    }
};
