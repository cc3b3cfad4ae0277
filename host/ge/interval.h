// Ranges of a curve's parameter, bounded or not.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "rx/types.h"

/// The numbers between two bounds, either of which may be missing. A bound also takes in the
/// numbers within the tolerance beyond it.
class AcGeInterval {
public:
    explicit AcGeInterval(double tol = 1e-12) : mTol(tol) {}
    AcGeInterval(double lower, double upper, double tol = 1e-12) : mTol(tol) { set(lower, upper); }
    AcGeInterval(Adesk::Boolean boundedBelow, double bound, double tol = 1e-12) : mTol(tol) {
        set(boundedBelow, bound);
    }

    [[nodiscard]] double lowerBound() const { return mLower; }
    [[nodiscard]] double upperBound() const { return mUpper; }
    /// Some number of the interval: a bound when there is one.
    [[nodiscard]] double element() const {
        if (isBoundedBelow()) return mLower;
        return isBoundedAbove() ? mUpper : 0.0;
    }
    void getBounds(double& lower, double& upper) const {
        lower = mLower;
        upper = mUpper;
    }
    /// Infinite when a bound is missing.
    [[nodiscard]] double length() const { return mUpper - mLower; }
    [[nodiscard]] double tolerance() const { return mTol; }

    AcGeInterval& set(double lower, double upper) {
        mLower = std::min(lower, upper);
        mUpper = std::max(lower, upper);
        return *this;
    }
    AcGeInterval& set(Adesk::Boolean boundedBelow, double bound) {
        set();
        (boundedBelow ? mLower : mUpper) = bound;
        return *this;
    }
    AcGeInterval& set() { return set(-kInfinity, kInfinity); }
    AcGeInterval& setUpper(double upper) { return set(mLower, upper); }
    AcGeInterval& setLower(double lower) { return set(lower, mUpper); }
    AcGeInterval& setTolerance(double tol) {
        mTol = tol;
        return *this;
    }

    [[nodiscard]] Adesk::Boolean isBounded() const { return isBoundedBelow() && isBoundedAbove(); }
    [[nodiscard]] Adesk::Boolean isBoundedAbove() const { return mUpper < kInfinity; }
    [[nodiscard]] Adesk::Boolean isBoundedBelow() const { return mLower > -kInfinity; }
    [[nodiscard]] Adesk::Boolean isUnBounded() const {
        return !isBoundedAbove() && !isBoundedBelow();
    }
    [[nodiscard]] Adesk::Boolean isSingleton() const { return length() <= mTol; }

    [[nodiscard]] Adesk::Boolean contains(double value) const {
        return value >= mLower - mTol && value <= mUpper + mTol;
    }
    [[nodiscard]] Adesk::Boolean contains(const AcGeInterval& other) const {
        return contains(other.mLower) && contains(other.mUpper);
    }
    [[nodiscard]] Adesk::Boolean isDisjoint(const AcGeInterval& other) const {
        return other.mLower > mUpper + mTol || other.mUpper < mLower - mTol;
    }
    /// The common part; false, and `result` untouched, when there is none.
    Adesk::Boolean intersectWith(const AcGeInterval& other, AcGeInterval& result) const {
        if (isDisjoint(other)) return false;
        result.set(std::max(mLower, other.mLower), std::min(mUpper, other.mUpper));
        return true;
    }
    /// The smallest interval that holds both.
    void getMerge(const AcGeInterval& other, AcGeInterval& result) const {
        result.set(std::min(mLower, other.mLower), std::max(mUpper, other.mUpper));
    }

    bool operator==(const AcGeInterval& other) const {
        return near(mLower, other.mLower) && near(mUpper, other.mUpper);
    }

private:
    static constexpr double kInfinity = std::numeric_limits<double>::infinity();
    [[nodiscard]] bool near(double a, double b) const { return a == b || std::abs(a - b) <= mTol; }

    double mLower = -kInfinity;
    double mUpper = kInfinity;
    double mTol;
};
