// Inside or outside against a bare crossing loop and Boost.Geometry; area, length and winding of
// polylines against plain loops with one atan an arc; opening an object by its id.
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <dbents.h>
#include <dbmain.h>
#include <dbpl.h>

#include "OrnCore/zel_dwg.h"
#include "against.h"
#include "geometry/line_tools.h"
#include "headless/session.h"

namespace {

constexpr double kTolerance = 1e-6;

/// A rough star of radii 50 to 100 about the origin.
AcGePoint3dArray star(int corners) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> radius(50.0, 100.0);
    AcGePoint3dArray points;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners;
        const double r = radius(random);
        points.append(AcGePoint3d(r * std::cos(angle), r * std::sin(angle), 0.0));
    }
    return points;
}

/// As many points as make the calls for small outlines long enough to time.
std::vector<AcGePoint3d> questions(int corners) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> coordinate(-110.0, 110.0);
    std::vector<AcGePoint3d> points(static_cast<std::size_t>(std::max(40, 400'000 / corners)));
    for (AcGePoint3d& p : points)
        p = AcGePoint3d(coordinate(random), coordinate(random), 0.0);
    return points;
}

/// The crossing loop alone: no tolerance, no outline.
bool isInside(const AcGePoint3d* v, int n, double x, double y) {
    bool inside = false;
    for (int i = 0, j = n - 1; i < n; j = i++) {
        if ((v[i].y > y) != (v[j].y > y) &&
            x < (v[j].x - v[i].x) * (y - v[i].y) / (v[j].y - v[i].y) + v[i].x)
            inside = !inside;
    }
    return inside;
}

template <class Ask>
auto forEach(const std::vector<AcGePoint3d>& points, Ask ask) {
    return [&points, ask] {
        int count = 0;
        for (const AcGePoint3d& p : points)
            count += ask(p) ? 1 : 0;
        benchmark::DoNotOptimize(count);
    };
}

void pointInPolygonAgainstCrossingLoop(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const AcGePoint3dArray outline = star(n);
    const std::vector<AcGePoint3d> points = questions(n);
    bench::against(
        state,
        forEach(points,
                [&](const AcGePoint3d& p) {
                    return CZelDwg::PtInClosePolygon(outline, p, kTolerance) == 1;
                }),
        forEach(points,
                [&](const AcGePoint3d& p) { return isInside(outline.asArrayPtr(), n, p.x, p.y); }),
        static_cast<double>(points.size()) * n);
}
BENCHMARK(pointInPolygonAgainstCrossingLoop)->Arg(4)->Arg(100)->Arg(10'000)->UseManualTime();

void pointInPolygonAgainstBoost(benchmark::State& state) {
    namespace bg = boost::geometry;
    using Point = bg::model::d2::point_xy<double>;
    const int n = static_cast<int>(state.range(0));
    const AcGePoint3dArray outline = star(n);
    const std::vector<AcGePoint3d> points = questions(n);
    bg::model::polygon<Point> polygon;
    for (int i = 0; i < n; ++i)
        bg::append(polygon, Point(outline[i].x, outline[i].y));
    bg::correct(polygon);
    bench::against(
        state,
        forEach(points,
                [&](const AcGePoint3d& p) {
                    return CZelDwg::PtInClosePolygon(outline, p, kTolerance) == 1;
                }),
        forEach(points, [&](const AcGePoint3d& p) { return bg::within(Point(p.x, p.y), polygon); }),
        static_cast<double>(points.size()) * n);
}
BENCHMARK(pointInPolygonAgainstBoost)->Arg(4)->Arg(100)->Arg(10'000)->UseManualTime();

struct Vertex {
    double x, y, bulge;
};

/// One arc in four vertices, on a circle so that the outline is simple.
std::vector<Vertex> outlineWithArcs(int corners) {
    std::vector<Vertex> outline;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners;
        outline.push_back(
            {1e4 * std::cos(angle), 1e4 * std::sin(angle), i % 4 == 0 ? 0.3 + 0.1 * (i % 3) : 0.0});
    }
    return outline;
}

void fill(AcDbPolyline& polyline, const std::vector<Vertex>& outline) {
    for (unsigned i = 0; i < outline.size(); ++i)
        polyline.addVertexAt(i, {outline[i].x, outline[i].y}, outline[i].bulge);
    polyline.setClosed(true);
}

/// Calls `visit` with every segment's chord, its length and its sweep: one atan an arc.
template <class Visit>
void forEachSegment(const std::vector<Vertex>& outline, Visit visit) {
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const Vertex& a = outline[i];
        const Vertex& b = outline[i + 1 < outline.size() ? i + 1 : 0];
        visit(a, b, a.bulge == 0.0 ? 0.0 : 4.0 * std::atan(a.bulge));
    }
}

double radius(const Vertex& a, const Vertex& b) {
    return std::hypot(b.x - a.x, b.y - a.y) * (1.0 + a.bulge * a.bulge) / (4.0 * a.bulge);
}

double plainArea(const std::vector<Vertex>& outline) {
    double sum = 0.0;
    forEachSegment(outline, [&](const Vertex& a, const Vertex& b, double sweep) {
        sum += (a.x * b.y - b.x * a.y) / 2.0;
        if (sweep == 0.0) return;
        const double r = radius(a, b);
        sum += r * r * (sweep - std::sin(sweep)) / 2.0;
    });
    return sum;
}

double plainLength(const std::vector<Vertex>& outline) {
    double sum = 0.0;
    forEachSegment(outline, [&](const Vertex& a, const Vertex& b, double sweep) {
        sum += sweep == 0.0 ? std::hypot(b.x - a.x, b.y - a.y) : radius(a, b) * sweep;
    });
    return sum;
}

/// Adds up sweeps, and the turns between segments by an arc tangent each.
double plainTurning(const std::vector<Vertex>& outline) {
    double sum = 0.0;
    double dx = 1.0;
    double dy = 0.0;
    double half = 0.0;
    forEachSegment(outline, [&](const Vertex& a, const Vertex& b, double sweep) {
        const double ex = b.x - a.x;
        const double ey = b.y - a.y;
        sum += std::atan2(dx * ey - dy * ex, dx * ex + dy * ey) - half - sweep / 2.0 + sweep;
        dx = ex;
        dy = ey;
        half = sweep / 2.0;
    });
    return sum;
}

template <class Ours, class Plain>
void measureAgainstPlainLoop(benchmark::State& state, Ours ours, Plain plain) {
    constexpr int kVertices = 10'000;
    constexpr int kRounds = 20;
    const headless::Session session;
    const std::vector<Vertex> outline = outlineWithArcs(kVertices);
    AcDbPolyline polyline(kVertices);
    fill(polyline, outline);
    const auto repeated = [](auto measure) {
        return [measure] {
            for (int i = 0; i < kRounds; ++i)
                benchmark::DoNotOptimize(measure());
        };
    };
    bench::against(state, repeated([&] { return ours(polyline); }),
                   repeated([&] { return plain(outline); }), kVertices * kRounds);
}

void areaAgainstPlainLoop(benchmark::State& state) {
    measureAgainstPlainLoop(
        state, [](AcDbPolyline& polyline) { return CZelDwg::GetPolylineArea(&polyline); },
        plainArea);
}
BENCHMARK(areaAgainstPlainLoop)->UseManualTime();

void lengthAgainstPlainLoop(benchmark::State& state) {
    measureAgainstPlainLoop(
        state, [](AcDbPolyline& polyline) { return LineTools::GetPlineLength(&polyline); },
        plainLength);
}
BENCHMARK(lengthAgainstPlainLoop)->UseManualTime();

void windingAgainstPlainLoop(benchmark::State& state) {
    measureAgainstPlainLoop(
        state,
        [](AcDbPolyline& polyline) {
            int winding = 0;
            LineTools::polyWindingNumber(&polyline, winding);
            return winding;
        },
        plainTurning);
}
BENCHMARK(windingAgainstPlainLoop)->UseManualTime();

/// Nanoseconds of opening and closing one of many objects, "op_ns".
void openById(benchmark::State& state) {
    constexpr int kObjects = 10'000;
    headless::Session session;
    session.newDrawing();
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < kObjects; ++i) {
        auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(i, 1, 0));
        ids.push_back(CZelDwg::AddEntity(line, nullptr, 0, 1));
    }
    for ([[maybe_unused]] auto round : state) {
        for (const AcDbObjectId id : ids) {
            AcDbObject* object = nullptr;
            if (acdbOpenAcDbObject(object, id, AcDb::kForRead) == Acad::eOk) object->close();
            benchmark::DoNotOptimize(object);
        }
    }
    state.SetItemsProcessed(state.iterations() * kObjects);
    state.counters["op_ns"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kObjects * 1e-9,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(openById);

} // namespace

BENCHMARK_MAIN();
