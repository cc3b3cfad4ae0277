// The geometry library's tolerances.
#pragma once

/// How near two points, or two vectors, must be to count as equal, in drawing units.
class AcGeTol {
public:
    constexpr AcGeTol() = default;

    [[nodiscard]] constexpr double equalPoint() const { return mPoint; }
    [[nodiscard]] constexpr double equalVector() const { return mVector; }
    constexpr void setEqualPoint(double value) { mPoint = value; }
    constexpr void setEqualVector(double value) { mVector = value; }

private:
    double mPoint = 1e-10;
    double mVector = 1e-10;
};

/// The process-wide defaults; plug-ins may assign to them.
struct AcGeContext {
    inline static AcGeTol gTol;
};

namespace headless {

/// Gives a session the default tolerances and puts back its predecessor's when it ends.
class GeState {
public:
    GeState() { AcGeContext::gTol = AcGeTol(); }
    ~GeState() { AcGeContext::gTol = previous_; }
    GeState(const GeState&) = delete;
    GeState& operator=(const GeState&) = delete;

private:
    AcGeTol previous_ = AcGeContext::gTol;
};

} // namespace headless
