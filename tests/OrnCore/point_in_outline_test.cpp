#include "OrnCore/point_in_outline.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "flattened.h"

namespace {

using orncore::OutlineVertex;
using orncore::Place;
using orncore::placeOf;
using std::numbers::pi;
using Points = std::vector<AcGePoint3d>;
using Vertices = std::vector<OutlineVertex>;

constexpr Place kOutside = Place::kOutside;
constexpr Place kOn = Place::kOnOutline;
constexpr Place kInside = Place::kInside;
const double kNan = std::nan("");

Vertices straight(const Points& points) {
    Vertices vertices;
    for (const AcGePoint3d& p : points)
        vertices.push_back({{p.x, p.y}});
    return vertices;
}

TEST(PlaceOf, StandsToStraightOutlines) {
    const Points square = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};
    const Points notched = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {6, 10, 0},
                            {6, 5, 0}, {4, 5, 0},  {4, 10, 0},  {0, 10, 0}};
    const Points diamond = {{0, -5, 0}, {5, 0, 0}, {0, 5, 0}, {-5, 0, 0}};
    const Points repeated = {{0, 0, 0},   {0, 0, 0},  {10, 0, 0}, {10, 0, 0},
                             {10, 10, 0}, {0, 10, 0}, {0, 10, 0}, {0, 0, 0}};
    const Points collinear = {{0, 0, 0},   {5, 0, 0},  {10, 0, 0}, {10, 5, 0},
                              {10, 10, 0}, {0, 10, 0}, {0, 5, 0}};
    const struct {
        const char* name;
        const Points& outline;
        AcGePoint2d point;
        double tolerance;
        Place place;
    } cases[] = {
        {"inside", square, {5, 5}, 0, kInside},
        {"right of it", square, {11, 5}, 0, kOutside},
        {"left of it, so that the ray passes through", square, {-1, 5}, 0, kOutside},
        {"above it", square, {5, 11}, 0, kOutside},
        {"on an edge", square, {10, 5}, 0, kOn},
        {"on the closing edge", square, {0, 5}, 0, kOn},
        {"at a corner", square, {10, 10}, 0, kOn},
        {"level with the lower edge", square, {-1, 0}, 0, kOutside},
        {"level with the upper edge", square, {-1, 10}, 0, kOutside},
        {"beyond the end of a level edge", square, {11, 10}, 0, kOutside},
        {"outside within the tolerance", square, {10.05, 5}, 0.1, kOn},
        {"inside within the tolerance", square, {9.95, 5}, 0.1, kOn},
        {"just outside the tolerance", square, {10.11, 5}, 0.1, kOutside},
        {"just inside the tolerance", square, {9.89, 5}, 0.1, kInside},
        {"near a corner but rounder than its box", square, {10.09, 10.09}, 0.1, kOutside},
        {"at the tolerance exactly", square, {10.5, 5}, 0.5, kOn},
        {"negative tolerance counts as none", square, {10, 5}, -1, kOn},
        {"tolerance larger than the outline", square, {5, 5}, 100, kOn},
        {"in the notch", notched, {5, 7}, 0, kOutside},
        {"beside the notch", notched, {2, 7}, 0, kInside},
        {"level with the floor of the notch", notched, {2, 5}, 0, kInside},
        {"ray through two corners", diamond, {-6, 0}, 0, kOutside},
        {"ray through one corner", diamond, {-1, 0}, 0, kInside},
        {"level with the top corner", diamond, {-1, 5}, 0, kOutside},
        {"level with the bottom corner", diamond, {-1, -5}, 0, kOutside},
        {"inside with repeated corners", repeated, {5, 5}, 0, kInside},
        {"level with repeated corners", repeated, {-5, 10}, 0, kOutside},
        {"near a repeated corner, outside its circle", repeated, {-0.09, -0.09}, 0.1, kOutside},
        {"at a repeated corner", repeated, {10, 0}, 0, kOn},
        {"vertices within straight runs", collinear, {5, 5}, 0, kInside},
        {"left of a vertex in a run", collinear, {-5, 5}, 0, kOutside},
        {"point that is no number", square, {kNan, 5}, 1, kOutside},
        {"tolerance that is no number", square, {5, 5}, kNan, kInside},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(placeOf(c.point, c.outline, c.tolerance), c.place);
        EXPECT_EQ(placeOf(c.point, straight(c.outline), c.tolerance), c.place);
        const Points backward(c.outline.rbegin(), c.outline.rend());
        EXPECT_EQ(placeOf(c.point, backward, c.tolerance), c.place);
    }
}

TEST(PlaceOf, StandsToDegenerateOutlines) {
    EXPECT_EQ(placeOf({0, 0}, Points{}, 1.0), kOutside);
    EXPECT_EQ(placeOf({0, 0}, Vertices{}, 1.0), kOutside);
    EXPECT_EQ(placeOf({0.5, 0}, Points{{0, 0, 0}}, 1.0), kOn);
    EXPECT_EQ(placeOf({2, 0}, Points{{0, 0, 0}}, 1.0), kOutside);
    EXPECT_EQ(placeOf({5, 0}, Points{{0, 0, 0}, {10, 0, 0}}, 0.0), kOn);
    EXPECT_EQ(placeOf({5, 1}, Points{{0, 0, 0}, {10, 0, 0}}, 0.0), kOutside);
    EXPECT_EQ(placeOf({1, 1}, Vertices{{{0, 0}, 1.0}, {{0, 0}, -0.5}}, 0.5), kOutside);
}

TEST(PlaceOf, StandsToArcsExactly) {
    const Vertices disc = {{{-10, 0}, 1}, {{10, 0}, 1}};
    const Vertices bump = {{{0, 0}}, {{10, 0}, 1}, {{10, 10}}, {{0, 10}}};  // to x = 15
    const Vertices bite = {{{0, 0}}, {{10, 0}, -1}, {{10, 10}}, {{0, 10}}}; // to x = 5
    const Vertices shallow = {{{0, 0}, 1e-9}, {{1000, 0}}, {{1000, 10}}, {{0, 10}}};
    // Three quarters of a circle about (0, 0) with radius 10, from (0, -10) round to (-10, 0).
    const Vertices keyhole = {{{0, -10}, std::tan(3 * pi / 8)}, {{-10, 0}}};
    const double diagonal = 10.0 / std::numbers::sqrt2;
    const struct {
        const char* name;
        const Vertices& outline;
        AcGePoint2d point;
        double tolerance;
        Place place;
    } cases[] = {
        {"centre", disc, {0, 0}, 0, kInside},
        {"inside near the circle", disc, {7.07, 7.07}, 0, kInside},
        {"outside near the circle", disc, {7.08, 7.08}, 0, kOutside},
        {"on the circle", disc, {diagonal, diagonal}, 1e-9, kOn},
        {"level with the top of the circle", disc, {-5, 10}, 0, kOutside},
        {"level with the bottom of the circle", disc, {-5, -10}, 0, kOutside},
        {"ray through both joints", disc, {-11, 0}, 0, kOutside},
        {"left of the circle, high up", disc, {-9.9, 9}, 0, kOutside},
        {"in the bump beyond the chord", bump, {14, 5}, 0, kInside},
        {"outside beside the bump", bump, {14, 9}, 0, kOutside},
        {"on the bump within the tolerance", bump, {15.05, 5}, 0.1, kOn},
        {"on the chord of the bump", bump, {10, 5}, 1e-6, kInside},
        {"in the bite", bite, {6, 5}, 0, kOutside},
        {"left of the bite", bite, {4, 5}, 0, kInside},
        {"beside the bite", bite, {6.5, 0.5}, 0, kInside},
        {"on the chord of the bite", bite, {10, 5}, 1e-6, kOutside},
        {"where the bite's circle goes on", bite, {15, 5}, 0.1, kOutside},
        {"below the chord of a shallow arc", shallow, {500, -4e-7}, 0, kInside},
        {"below a shallow arc", shallow, {500, -6e-7}, 0, kOutside},
        {"on a shallow arc", shallow, {500, -5e-7}, 1e-12, kOn},
        {"great arc, opposite the gap", keyhole, {diagonal - 0.01, diagonal - 0.01}, 0, kInside},
        {"great arc, within the gap", keyhole, {-diagonal + 1, -diagonal + 1}, 0, kOutside},
        {"great arc, where its circle goes on", keyhole, {-diagonal, -diagonal}, 0.1, kOutside},
        {"great arc, its end", keyhole, {-10, 0.05}, 0.1, kOn},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(placeOf(c.point, c.outline, c.tolerance), c.place);
        for (const double degree : {30.0, 90.0, 145.0, 180.0, 270.0}) {
            // Turned about the point, the ray leaves it in other directions.
            const double cosine = std::cos(degree * pi / 180.0);
            const double sine = std::sin(degree * pi / 180.0);
            Vertices turned = c.outline;
            for (OutlineVertex& v : turned) {
                const AcGeVector2d away = v.point - c.point;
                v.point = c.point + AcGeVector2d(away.x * cosine - away.y * sine,
                                                 away.x * sine + away.y * cosine);
            }
            SCOPED_TRACE(degree);
            EXPECT_EQ(placeOf(c.point, turned, std::max(c.tolerance, 1e-10)), c.place);
        }
    }
}

/// By the angles under which the chords are seen, which add up to whole circles from inside.
bool isSeenFromInside(const AcGePoint2d& p, const std::vector<AcGePoint2d>& chords) {
    double total = 0.0;
    for (std::size_t i = 0; i < chords.size(); ++i) {
        const AcGeVector2d a = chords[i] - p;
        const AcGeVector2d b = chords[(i + 1) % chords.size()] - p;
        total += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
    }
    return std::lround(total / (2.0 * pi)) % 2 != 0;
}

double distanceToChords(const AcGePoint2d& p, const std::vector<AcGePoint2d>& chords) {
    double least = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < chords.size(); ++i) {
        const AcGePoint2d a = chords[i];
        const AcGeVector2d edge = chords[(i + 1) % chords.size()] - a;
        const AcGeVector2d toPoint = p - a;
        const double square = edge.x * edge.x + edge.y * edge.y;
        const double along =
            std::clamp((edge.x * toPoint.x + edge.y * toPoint.y) / square, 0.0, 1.0);
        least = std::min(least, std::hypot(toPoint.x - along * edge.x, toPoint.y - along * edge.y));
    }
    return least;
}

TEST(PlaceOf, AgreesWithAngleSumsOfRandomOutlines) {
    constexpr int kFewChords = 150;
    std::mt19937 random(987654);
    std::uniform_real_distribution<double> coordinate(-130.0, 130.0);
    std::uniform_real_distribution<double> tolerance(0.0, 5.0);
    int compared = 0;
    for (int round = 0; round < 80; ++round) {
        // Half of the outlines are straight, the others loop and cross themselves.
        const double greatestBulge = round % 2 == 0 ? 0.0 : 4.0;
        const Vertices outline = test_support::randomStar(random, 3 + round % 8, greatestBulge);
        const std::vector<AcGePoint2d> chords = test_support::flattened(outline, kFewChords);
        Points points;
        for (const OutlineVertex& v : outline)
            points.emplace_back(v.point.x, v.point.y, 0.0);
        for (int i = 0; i < 60; ++i) {
            const AcGePoint2d p(coordinate(random), coordinate(random));
            const double tol = tolerance(random);
            const double distance = distanceToChords(p, chords);
            // Chords run up to this far from their arcs of radius 250 and less.
            constexpr double kDoubt = 0.5;
            if (std::abs(distance - tol) < kDoubt) continue;
            ++compared;
            const Place expected =
                distance < tol ? kOn : (isSeenFromInside(p, chords) ? kInside : kOutside);
            EXPECT_EQ(placeOf(p, outline, tol), expected) << round << " " << p.x << "," << p.y;
            if (greatestBulge == 0.0) {
                EXPECT_EQ(placeOf(p, points, tol), expected);
            }
        }
    }
    EXPECT_GT(compared, 2000);
}

} // namespace
