#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "ge/spline.h"
#include "ge_matchers.h"

namespace {

using headless::Extents3d;
using headless::Spline;
using std::numbers::pi;

/// The full circle of radius 1 as nine weighted points.
Spline circle() {
    const double s = std::sqrt(0.5);
    return {2,
            {{1, 0, 0},
             {1, 1, 0},
             {0, 1, 0},
             {-1, 1, 0},
             {-1, 0, 0},
             {-1, -1, 0},
             {0, -1, 0},
             {1, -1, 0},
             {1, 0, 0}},
            {1, s, 1, s, 1, s, 1, s, 1},
            {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4}};
}

Spline parabola() { return {2, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}, {}, {0, 0, 0, 1, 1, 1}}; }

/// A uniform periodic cubic: its ends are not clamped.
Spline periodicSquare() {
    return {3,
            {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}, {1, 0, 0}, {1, 1, 0}},
            {},
            {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};
}

TEST(Spline, Evaluates) {
    const double s = std::sqrt(0.5);
    const struct {
        const char* name;
        Spline spline;
        double t;
        AcGePoint3d point;
        AcGeVector3d velocity;
    } cases[] = {
        {"start", parabola(), 0, {0, 0, 0}, {2, 4, 0}},
        {"middle", parabola(), 0.5, {1, 1, 0}, {2, 0, 0}},
        {"end", parabola(), 1, {2, 0, 0}, {2, -4, 0}},
        {"beyond the end counts as the end", parabola(), 7, {2, 0, 0}, {2, -4, 0}},
        {"circle at a knot", circle(), 1, {0, 1, 0}, {-std::sqrt(2.0), 0, 0}},
        {"circle between knots", circle(), 2.5, {-s, -s, 0}, {s * 1.6568542, -s * 1.6568542, 0}},
        // (P0 + 4 P1 + P2) / 6 at the first knot of the range.
        {"unclamped start", periodicSquare(), 3, {5.0 / 6, 1.0 / 6, 0}, {0.5, 0.5, 0}},
        {"unclamped end meets it", periodicSquare(), 7, {5.0 / 6, 1.0 / 6, 0}, {0.5, 0.5, 0}},
        {"degree 1",
         {1, {{0, 0, 0}, {3, 4, 0}, {3, 9, 0}}, {}, {0, 0, 1, 3, 3}},
         2,
         {3, 6.5, 0},
         {0, 2.5, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(c.spline.isValid());
        EXPECT_THAT(c.spline.pointAt(c.t), IsNear(c.point));
        EXPECT_THAT(c.spline.derivativeAt(c.t, 1), IsNear(c.velocity, 1e-7));
        // The second derivative against the difference of the first.
        const double h = 1e-5;
        const double t = std::clamp(c.t, c.spline.startParam() + h, c.spline.endParam() - 2 * h);
        const AcGeVector3d slope =
            (c.spline.derivativeAt(t + h, 1) - c.spline.derivativeAt(t, 1)) / h;
        EXPECT_THAT(c.spline.derivativeAt(t + h / 2, 2), IsNear(slope, 1e-4));
    }
}

TEST(Spline, MeasuresWithKnownFigures) {
    // Parabola x = 2t, y = 4t(1 - t): its length is sqrt(5) + asinh(2) / 2.
    const struct {
        const char* name;
        Spline spline;
        AcGePoint3d min, max;
        double length;
        double area; // about +z
    } cases[] = {
        {"parabola",
         parabola(),
         {0, 0, 0},
         {2, 1, 0},
         std::sqrt(5.0) + std::asinh(2.0) / 2,
         -4.0 / 3},
        {"circle", circle(), {-1, -1, 0}, {1, 1, 0}, 2 * pi, pi},
        {"polygon",
         {1, {{0, 0, 0}, {3, 0, 0}, {3, 4, 0}, {0, 0, 0}}, {}, {0, 0, 1, 2, 3, 3}},
         {0, 0, 0},
         {3, 4, 0},
         12,
         6},
        {"a point",
         {2, {{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}, {}, {0, 0, 0, 1, 1, 1}},
         {1, 2, 3},
         {1, 2, 3},
         0,
         0},
        {"a cusp",
         {3, {{0, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 0, 0}}, {}, {0, 0, 0, 0, 1, 1, 1, 1}},
         {0, 0, 0},
         {1, 0.75, 0},
         std::sqrt(8.0) - 1,
         -0.3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Extents3d extents = headless::splineExtents(c.spline);
        EXPECT_THAT(extents.min, IsNear(c.min, 1e-13));
        EXPECT_THAT(extents.max, IsNear(c.max, 1e-13));
        EXPECT_NEAR(headless::splineLength(c.spline), c.length, 1e-12 * (1 + c.length));
        EXPECT_THAT(headless::splineVectorArea(c.spline),
                    IsNear(AcGeVector3d(0, 0, c.area), 1e-12));
        Spline far = c.spline;
        far.transformBy(AcGeMatrix3d::translation({3e6, -5e6, 0}));
        EXPECT_NEAR(headless::splineExtents(far).max.x - 3e6, c.max.x, 1e-9);
        Spline back = c.spline;
        back.reverse();
        EXPECT_THAT(headless::splineExtents(back).max, IsNear(c.max, 1e-13));
        EXPECT_THAT(back.pointAt(back.startParam()), IsNear(c.spline.pointAt(c.spline.endParam())));
    }
}

TEST(Spline, ExtentsLengthAndNearestPointAgreeWithSamples) {
    std::mt19937 random(17);
    std::uniform_real_distribution<double> number(-1, 1);
    for (int round = 0; round < 60; ++round) {
        Spline spline;
        spline.degree = 2 + round % 4;
        const int n = spline.degree + 1 + round % 7;
        double knot = 0;
        for (int i = 0; i < n; ++i) {
            spline.points.emplace_back(number(random), number(random), number(random));
            if (round % 2) spline.weights.push_back(0.2 + std::abs(number(random)) * 4);
        }
        for (int i = 0; i < n + spline.degree + 1; ++i)
            spline.knots.push_back(knot +=
                                   i % 2 ? std::max(0.0, number(random)) : 0.1); // Some repeat.
        if (!spline.isValid()) continue;
        Extents3d sampled;
        double chords = 0, nearest = 1e9;
        const AcGePoint3d target(number(random), number(random), number(random));
        AcGePoint3d last = spline.pointAt(spline.startParam());
        for (std::size_t k = 0; k + 1 < spline.knots.size(); ++k) {
            const double from = std::clamp(spline.knots[k], spline.startParam(), spline.endParam());
            const double to =
                std::clamp(spline.knots[k + 1], spline.startParam(), spline.endParam());
            constexpr int kSamples = 1000;
            for (int i = 0; from < to && i <= kSamples; ++i) {
                const AcGePoint3d p = spline.pointAt(from + (to - from) * i / kSamples);
                sampled.add(p);
                chords += last.distanceTo(p);
                nearest = std::min(nearest, p.distanceTo(target));
                last = p;
            }
        }
        SCOPED_TRACE(round);
        const Extents3d exact = headless::splineExtents(spline);
        for (unsigned int axis = 0; axis < 3; ++axis) {
            EXPECT_LE(exact.min[axis], sampled.min[axis] + 1e-12);
            EXPECT_GE(exact.max[axis], sampled.max[axis] - 1e-12);
        }
        EXPECT_THAT(exact.min, IsNear(sampled.min, 1e-3));
        EXPECT_THAT(exact.max, IsNear(sampled.max, 1e-3));
        EXPECT_NEAR(headless::splineLength(spline), chords, 1e-3);
        const double t = headless::splineClosestParam(spline, target);
        EXPECT_LE(spline.pointAt(t).distanceTo(target), nearest + 1e-9);
    }
}

TEST(Spline, RefusesWhatIsNoCurve) {
    static constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* name;
        void (*damage)(Spline&);
    } cases[] = {
        {"no points", [](Spline& s) { s.points.clear(); }},
        {"a knot short", [](Spline& s) { s.knots.pop_back(); }},
        {"falling knots", [](Spline& s) { s.knots[5] = -1; }},
        {"no range", [](Spline& s) { std::fill(s.knots.begin(), s.knots.end(), 1.0); }},
        {"degree 0", [](Spline& s) { s.degree = 0; }},
        {"huge degree", [](Spline& s) { s.degree = 1000000; }},
        {"a weight short", [](Spline& s) { s.weights.pop_back(); }},
        {"zero weight", [](Spline& s) { s.weights[3] = 0; }},
        {"NaN point", [](Spline& s) { s.points[3].y = kNan; }},
        {"NaN knot", [](Spline& s) { s.knots[3] = kNan; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Spline damaged = circle();
        c.damage(damaged);
        EXPECT_FALSE(damaged.isValid());
        EXPECT_FALSE(headless::splineExtents(damaged).isValid());
        EXPECT_EQ(headless::splineLength(damaged), 0);
    }
}

TEST(Spline, PassesThroughFitPoints) {
    const std::vector<AcGePoint3d> points = {{0, 0, 0}, {3, 4, 0}, {3, 4, 0}, {6, 0, 1}, {9, 4, 2}};
    const auto natural = headless::splineThrough(points, std::nullopt, std::nullopt);
    ASSERT_TRUE(natural && natural->isValid());
    EXPECT_EQ(natural->points.size(), 6U) << "two more than the four different fit points";
    double t = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) t += points[i].distanceTo(points[i - 1]);
        EXPECT_THAT(natural->pointAt(t), IsNear(points[i]));
    }
    EXPECT_THAT(natural->derivativeAt(0, 2), IsNear(AcGeVector3d()));
    EXPECT_THAT(natural->derivativeAt(t, 2), IsNear(AcGeVector3d()));
    EXPECT_THAT(natural->derivativeAt(5 - 1e-9, 2),
                IsNear(natural->derivativeAt(5 + 1e-9, 2), 1e-6));

    const auto guided =
        headless::splineThrough(points, AcGeVector3d(0, 5, 0), AcGeVector3d(2, 0, 0));
    ASSERT_TRUE(guided);
    EXPECT_THAT(guided->derivativeAt(0, 1), IsNear(AcGeVector3d(0, 1, 0)));
    EXPECT_THAT(guided->derivativeAt(guided->endParam(), 1), IsNear(AcGeVector3d(1, 0, 0)));
    EXPECT_THAT(guided->pointAt(5), IsNear(points[1]));

    const std::vector<AcGePoint3d> two = {{0, 0, 0}, {3, 4, 0}};
    EXPECT_NEAR(headless::splineLength(*headless::splineThrough(two, {}, {})), 5, 1e-12);
    const std::vector<AcGePoint3d> same = {{1, 1, 1}, {1, 1, 1}};
    EXPECT_FALSE(headless::splineThrough(same, {}, {}));
}

} // namespace
