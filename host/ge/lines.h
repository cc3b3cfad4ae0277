// Endless lines, rays and line segments.
#pragma once

#include "ge/linear_entity.h"

namespace headless {

/// Members of lines and rays of either dimension.
template <class D>
class DirectedOf : public D::LinearEnt {
public:
    using Point = typename D::Point;
    using Vector = typename D::Vector;

protected:
    DirectedOf(const Point& pnt, const Vector& vec) : D::LinearEnt(pnt, vec.normal()) {}

    void assign(const Point& pnt, const Vector& vec) {
        this->mPoint = pnt;
        this->mVector = vec.normal();
    }
    void apply(const typename D::Matrix& mat) override {
        D::LinearEnt::apply(mat);
        this->mVector.normalize();
    }
};

/// Members of rays of either dimension. A reversed ray keeps its points and runs up to t = 0.
template <class D>
class RayOf : public DirectedOf<D> {
protected:
    using DirectedOf<D>::DirectedOf;
    [[nodiscard]] AcGeInterval interval() const override { return {!mReversed, 0.0}; }
    void reverse() override {
        DirectedOf<D>::reverse();
        mReversed = !mReversed;
    }

private:
    bool mReversed = false;
};

/// Members of segments of either dimension.
template <class D>
class SegmentOf : public D::LinearEnt {
public:
    using Point = typename D::Point;
    using Vector = typename D::Vector;
    using D::LinearEnt::length;

    [[nodiscard]] Point startPoint() const { return this->mPoint; }
    [[nodiscard]] Point endPoint() const { return mEnd; }
    [[nodiscard]] Point midPoint() const { return baryComb(0.5); }
    /// The start weighted 1 - `blendCoeff` and the end `blendCoeff`.
    [[nodiscard]] Point baryComb(double blendCoeff) const { return pointAt(blendCoeff); }
    [[nodiscard]] double length() const { return this->mVector.length(); }

protected:
    SegmentOf(const Point& start, const Point& end) : D::LinearEnt(start, end - start), mEnd(end) {}

    void assign(const Point& start, const Point& end) {
        this->mPoint = start;
        this->mVector = end - start;
        mEnd = end;
    }
    [[nodiscard]] AcGeInterval interval() const override { return {0.0, 1.0}; }
    // Adding the difference back to the start may miss the end by a rounding.
    [[nodiscard]] Point pointAt(double param) const override {
        return param == 1.0 ? mEnd : D::LinearEnt::pointAt(param);
    }
    void apply(const typename D::Matrix& mat) override { assign(mat * this->mPoint, mat * mEnd); }
    void reverse() override {
        const Point start = this->mPoint;
        assign(mEnd, start);
    }

private:
    Point mEnd;
};

} // namespace headless

class AcGeLine2d : public headless::DirectedOf<headless::Plane2d> {
public:
    static const AcGeLine2d kXAxis;
    static const AcGeLine2d kYAxis;

    AcGeLine2d() : DirectedOf(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}
    AcGeLine2d(const AcGePoint2d& pnt, const AcGeVector2d& vec) : DirectedOf(pnt, vec) {}
    AcGeLine2d(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) : DirectedOf(pnt1, pnt2 - pnt1) {}
    AcGeLine2d& set(const AcGePoint2d& pnt, const AcGeVector2d& vec) {
        assign(pnt, vec);
        return *this;
    }
    AcGeLine2d& set(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) {
        return set(pnt1, pnt2 - pnt1);
    }
    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kLine2d; }
    [[nodiscard]] AcGeLine2d* copy() const override { return new AcGeLine2d(*this); }

protected:
    [[nodiscard]] AcGeInterval interval() const override { return AcGeInterval(); }
};

class AcGeLine3d : public headless::DirectedOf<headless::Space3d> {
public:
    static const AcGeLine3d kXAxis;
    static const AcGeLine3d kYAxis;
    static const AcGeLine3d kZAxis;

    AcGeLine3d() : DirectedOf(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeLine3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : DirectedOf(pnt, vec) {}
    AcGeLine3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) : DirectedOf(pnt1, pnt2 - pnt1) {}
    AcGeLine3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        assign(pnt, vec);
        return *this;
    }
    AcGeLine3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) {
        return set(pnt1, pnt2 - pnt1);
    }
    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kLine3d; }
    [[nodiscard]] AcGeLine3d* copy() const override { return new AcGeLine3d(*this); }

protected:
    [[nodiscard]] AcGeInterval interval() const override { return AcGeInterval(); }
};

class AcGeRay2d : public headless::RayOf<headless::Plane2d> {
public:
    AcGeRay2d() : RayOf(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis) {}
    AcGeRay2d(const AcGePoint2d& pnt, const AcGeVector2d& vec) : RayOf(pnt, vec) {}
    AcGeRay2d(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) : RayOf(pnt1, pnt2 - pnt1) {}
    AcGeRay2d& set(const AcGePoint2d& pnt, const AcGeVector2d& vec) {
        return *this = AcGeRay2d(pnt, vec);
    }
    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kRay2d; }
    [[nodiscard]] AcGeRay2d* copy() const override { return new AcGeRay2d(*this); }
};

class AcGeRay3d : public headless::RayOf<headless::Space3d> {
public:
    AcGeRay3d() : RayOf(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis) {}
    AcGeRay3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : RayOf(pnt, vec) {}
    AcGeRay3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) : RayOf(pnt1, pnt2 - pnt1) {}
    AcGeRay3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        return *this = AcGeRay3d(pnt, vec);
    }
    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kRay3d; }
    [[nodiscard]] AcGeRay3d* copy() const override { return new AcGeRay3d(*this); }
};

class AcGeLineSeg2d : public headless::SegmentOf<headless::Plane2d> {
public:
    AcGeLineSeg2d() : SegmentOf(AcGePoint2d::kOrigin, AcGePoint2d(1.0, 0.0)) {}
    AcGeLineSeg2d(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) : SegmentOf(pnt1, pnt2) {}
    AcGeLineSeg2d(const AcGePoint2d& pnt, const AcGeVector2d& vec) : SegmentOf(pnt, pnt + vec) {}
    AcGeLineSeg2d& set(const AcGePoint2d& pnt1, const AcGePoint2d& pnt2) {
        assign(pnt1, pnt2);
        return *this;
    }
    AcGeLineSeg2d& set(const AcGePoint2d& pnt, const AcGeVector2d& vec) {
        return set(pnt, pnt + vec);
    }
    /// The line through the middle, perpendicular to the segment.
    void getBisector(AcGeLine2d& line) const { getPerpLine(midPoint(), line); }
    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kLineSeg2d; }
    [[nodiscard]] AcGeLineSeg2d* copy() const override { return new AcGeLineSeg2d(*this); }
};

class AcGeLineSeg3d : public headless::SegmentOf<headless::Space3d> {
public:
    AcGeLineSeg3d() : SegmentOf(AcGePoint3d::kOrigin, AcGePoint3d(1.0, 0.0, 0.0)) {}
    AcGeLineSeg3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) : SegmentOf(pnt1, pnt2) {}
    AcGeLineSeg3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : SegmentOf(pnt, pnt + vec) {}
    AcGeLineSeg3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) {
        assign(pnt1, pnt2);
        return *this;
    }
    AcGeLineSeg3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) {
        return set(pnt, pnt + vec);
    }
    /// The plane through the middle, perpendicular to the segment.
    void getBisector(AcGePlane& plane) const { getPerpPlane(midPoint(), plane); }
    [[nodiscard]] AcGe::EntityId type() const override { return AcGe::kLineSeg3d; }
    [[nodiscard]] AcGeLineSeg3d* copy() const override { return new AcGeLineSeg3d(*this); }
};
