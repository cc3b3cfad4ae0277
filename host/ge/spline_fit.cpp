// Cubic splines through given points.
#include <cmath>

#include "ge/spline.h"

namespace headless {

namespace {

/// Points, their parameters and the curve's velocities there.
struct Hermite {
    std::vector<AcGePoint3d> points;
    std::vector<double> params;
    std::vector<AcGeVector3d> velocities;

    [[nodiscard]] double width(std::size_t i) const { return params[i + 1] - params[i]; }
    [[nodiscard]] AcGeVector3d slope(std::size_t i) const {
        return (points[i + 1] - points[i]) / width(i);
    }
};

Hermite withChordParams(std::span<const AcGePoint3d> fitPoints) {
    Hermite h;
    for (const AcGePoint3d& point : fitPoints) {
        const double step = h.points.empty() ? 0.0 : point.distanceTo(h.points.back());
        if (!h.points.empty() && !(step > AcGeContext::gTol.equalPoint())) continue;
        h.params.push_back(h.params.empty() ? 0.0 : h.params.back() + step);
        h.points.push_back(point);
    }
    return h;
}

/// One row of the equations for the velocities: before, own and after factors, right side.
struct Row {
    double before = 0.0;
    double own = 1.0;
    double after = 0.0;
    AcGeVector3d right;
};

std::vector<AcGeVector3d> solveTridiagonal(std::vector<Row> rows) {
    const std::size_t n = rows.size();
    for (std::size_t i = 1; i < n; ++i) {
        const double factor = rows[i].before / rows[i - 1].own;
        rows[i].own -= factor * rows[i - 1].after;
        rows[i].right -= rows[i - 1].right * factor;
    }
    std::vector<AcGeVector3d> result(n);
    result[n - 1] = rows[n - 1].right / rows[n - 1].own;
    for (std::size_t i = n - 1; i-- > 0;)
        result[i] = (rows[i].right - result[i + 1] * rows[i].after) / rows[i].own;
    return result;
}

/// Velocities that make the second derivative continuous, and zero at ends without a tangent.
void solveVelocities(Hermite& h, const std::optional<AcGeVector3d>& startTangent,
                     const std::optional<AcGeVector3d>& endTangent) {
    const std::size_t last = h.points.size() - 1;
    std::vector<Row> rows(last + 1);
    rows[0] = startTangent ? Row{0, 1, 0, startTangent->normal()} : Row{0, 2, 1, h.slope(0) * 3.0};
    rows[last] =
        endTangent ? Row{0, 1, 0, endTangent->normal()} : Row{1, 2, 0, h.slope(last - 1) * 3.0};
    for (std::size_t i = 1; i < last; ++i) {
        const double left = h.width(i - 1);
        const double right = h.width(i);
        rows[i] = {right, 2.0 * (left + right), left,
                   (h.slope(i - 1) * right + h.slope(i) * left) * 3.0};
    }
    h.velocities = solveTridiagonal(std::move(rows));
}

/// The blossom of the cubic over [params[i], params[i + 1]].
AcGePoint3d blossomOf(const Hermite& h, std::size_t i, const double (&arguments)[3]) {
    const double third = h.width(i) / 3.0;
    AcGePoint3d d[] = {h.points[i], h.points[i] + h.velocities[i] * third,
                       h.points[i + 1] - h.velocities[i + 1] * third, h.points[i + 1]};
    for (int left = 3; left > 0; --left) {
        const double share = (arguments[left - 1] - h.params[i]) / h.width(i);
        for (int j = 0; j < left; ++j)
            d[j] = d[j] + (d[j + 1] - d[j]) * share;
    }
    return d[0];
}

} // namespace

std::optional<Spline> splineThrough(std::span<const AcGePoint3d> fitPoints,
                                    std::optional<AcGeVector3d> startTangent,
                                    std::optional<AcGeVector3d> endTangent) {
    Hermite h = withChordParams(fitPoints);
    if (h.points.size() < 2) return std::nullopt;
    solveVelocities(h, startTangent, endTangent);

    Spline spline;
    spline.degree = 3;
    spline.knots.assign(3, h.params.front());
    spline.knots.insert(spline.knots.end(), h.params.begin(), h.params.end());
    spline.knots.insert(spline.knots.end(), 3, h.params.back());
    // The cubics join twice smoothly, so that control point i is the blossom of its three inner
    // knots on any cubic next to them.
    for (std::size_t i = 0; i + 4 < spline.knots.size(); ++i) {
        const double inner[] = {spline.knots[i + 1], spline.knots[i + 2], spline.knots[i + 3]};
        const std::size_t piece = i < 2 ? 0 : std::min(i - 2, h.points.size() - 2);
        spline.points.push_back(blossomOf(h, piece, inner));
    }
    return spline;
}

} // namespace headless
