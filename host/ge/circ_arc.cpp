#include "ge/circ_arc.h"

#include "ge/angles.h"

namespace headless {

template <class D>
CircArcOf<D>::CircArcOf(const Point& center, double radius, const Vector& ref, double start,
                        double end)
    : mCenter(center), mRadius(radius), mRef(ref.normal()) {
    assignAngles(start, end);
}

template <class D>
typename D::Point CircArcOf<D>::pointAt(double param) const {
    return mCenter + (mRef * std::cos(param) + across() * std::sin(param)) * mRadius;
}

template <class D>
typename D::Vector CircArcOf<D>::derivativeAt(double param, int order) const {
    // Each derivative is the one before it, a quarter turn ahead.
    const Vector towards = mRef * std::cos(param) + across() * std::sin(param);
    const Vector ahead = across() * std::cos(param) - mRef * std::sin(param);
    const Vector& quarter = order % 2 == 0 ? towards : ahead;
    return quarter * (order % 4 < 2 ? mRadius : -mRadius);
}

template <class D>
double CircArcOf<D>::closestParam(const Point& pnt) const {
    const Vector out = pnt - mCenter;
    const double angle = std::atan2(out.dotProduct(across()), out.dotProduct(mRef));
    const double shift = normalizedAngle(angle - mStart);
    const double sweep = mEnd - mStart;
    if (shift <= sweep) return mStart + shift;
    return shift - sweep <= kFullTurn - shift ? mEnd : mStart;
}

template <class D>
bool CircArcOf<D>::equals(const typename D::Entity& other, const AcGeTol& tol) const {
    const auto& arc = static_cast<const CircArcOf&>(other);
    return mCenter.isEqualTo(arc.mCenter, tol) &&
           std::abs(mRadius - arc.mRadius) <= tol.equalPoint() &&
           pointAt(mStart).isEqualTo(arc.pointAt(arc.mStart), tol) &&
           std::abs((mEnd - mStart) - (arc.mEnd - arc.mStart)) * mRadius <= tol.equalPoint();
}

template <class D>
void CircArcOf<D>::assignAngles(double start, double end) {
    mStart = start;
    mEnd = endOfTurn(start, end);
}

template <class D>
void CircArcOf<D>::turnAngles() {
    assignAngles(-mEnd, -mStart);
}

template class CircArcOf<Plane2d>;
template class CircArcOf<Space3d>;

} // namespace headless
