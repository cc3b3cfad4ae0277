#include "ge/bezier_cuts.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

AcGePoint3d pointOf(const Homogeneous& h) { return (h.p / h.w).asPoint(); }

/// A place on a curve and how the curve runs there by the share of its range.
struct Running {
    AcGePoint3d point;
    AcGeVector3d velocity;
};

Running runningAt(const RationalBezier& curve, double share) {
    Homogeneous d[kMostDegree + 1];
    std::copy(curve.begin(), curve.end(), d);
    const std::size_t degree = curve.size() - 1;
    for (std::size_t left = degree; left > 1; --left)
        for (std::size_t i = 0; i < left; ++i)
            d[i] = d[i] * (1.0 - share) + d[i + 1] * share;
    const Homogeneous at = d[0] * (1.0 - share) + d[1] * share;
    const Homogeneous slope = (d[1] + d[0] * -1.0) * static_cast<double>(degree);
    const AcGeVector3d place = at.p / at.w;
    return {place.asPoint(), (slope.p - place * slope.w) / at.w};
}

/// Part of a curve with the box around its control points.
struct Part {
    explicit Part(RationalBezier curve) : points(std::move(curve)) {
        for (const Homogeneous& h : points)
            box.add(pointOf(h));
    }

    double size() const { return box.min.distanceTo(box.max); }
    AcGeVector3d chord() const { return pointOf(points.back()) - pointOf(points.front()); }
    /// True when all legs of the control polygon run along the chord, so that the curve does too.
    bool isStraight() const {
        constexpr double kCosine = 0.999;
        const AcGeVector3d along = chord();
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const AcGeVector3d leg = pointOf(points[i + 1]) - pointOf(points[i]);
            if (!(leg.dotProduct(along) >= kCosine * leg.length() * along.length())) return false;
        }
        return along.lengthSqrd() > 0.0;
    }

    RationalBezier points;
    Extents3d box;
};

std::pair<Part, Part> halves(const Part& part) {
    RationalBezier left;
    RationalBezier right;
    RationalBezier row = part.points;
    while (!row.empty()) {
        left.push_back(row.front());
        right.push_back(row.back());
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            row[i] = (row[i] + row[i + 1]) * 0.5;
        row.pop_back();
    }
    std::reverse(right.begin(), right.end());
    return {Part(std::move(left)), Part(std::move(right))};
}

bool apart(const Extents3d& a, const Extents3d& b, double tolerance) {
    for (unsigned int axis = 0; axis < 3; ++axis)
        if (a.min[axis] > b.max[axis] + tolerance || b.min[axis] > a.max[axis] + tolerance)
            return true;
    return false;
}

struct Nearest {
    AcGePoint3d point;
    double distance = 0.0;
};

/// Where two parts are nearest to each other, by damped steps on both shares at once.
Nearest nearestOf(const Part& a, const Part& b) {
    double s = 0.5;
    double t = 0.5;
    double damping = 0.0;
    Running onA = runningAt(a.points, s);
    Running onB = runningAt(b.points, t);
    AcGeVector3d gap = onA.point - onB.point;
    for (int step = 0; step < 60; ++step) {
        const double aa = onA.velocity.lengthSqrd() * (1.0 + damping);
        const double bb = onB.velocity.lengthSqrd() * (1.0 + damping);
        const double ab = onA.velocity.dotProduct(onB.velocity);
        const double ga = gap.dotProduct(onA.velocity);
        const double gb = gap.dotProduct(onB.velocity);
        const double determinant = aa * bb - ab * ab;
        if (!(determinant > 1e-14 * aa * bb)) {
            if (damping > 1.0) break;
            damping = damping * 10.0 + 1e-6;
            continue;
        }
        const double nextS = std::clamp(s + (gb * ab - ga * bb) / determinant, 0.0, 1.0);
        const double nextT = std::clamp(t + (gb * aa - ga * ab) / determinant, 0.0, 1.0);
        const Running nextA = runningAt(a.points, nextS);
        const Running nextB = runningAt(b.points, nextT);
        const AcGeVector3d nextGap = nextA.point - nextB.point;
        const bool still = std::abs(nextS - s) + std::abs(nextT - t) < 1e-15;
        if (nextGap.lengthSqrd() > gap.lengthSqrd()) {
            if (still || damping > 1e6) break;
            damping = damping * 10.0 + 1e-3;
            continue;
        }
        s = nextS;
        t = nextT;
        onA = nextA;
        onB = nextB;
        gap = nextGap;
        damping /= 10.0;
        if (still) break;
    }
    return {onA.point, gap.length()};
}

/// Halves pairs of parts that may meet until each meets once, touches, or is apart.
class Search {
public:
    Search(double leafSize, double tolerance) : leafSize_(leafSize), tolerance_(tolerance) {}

    void add(const Part& a, const Part& b) {
        if (!apart(a.box, b.box, tolerance_)) pairs_.push_back({a, b});
    }

    std::vector<AcGePoint3d> run() {
        // A pair has a handful of neighbours where curves cross or touch, and all of a stretch
        // where they lie on each other.
        const std::size_t most = 4000 + 4 * pairs_.size();
        while (!pairs_.empty() && pairs_.size() <= most) {
            std::vector<Pair> pairs;
            pairs.swap(pairs_);
            for (const Pair& pair : pairs)
                refine(pair);
        }
        return finish();
    }

private:
    struct Pair {
        Part a;
        Part b;
    };

    void refine(const Pair& pair) {
        const double sizeA = pair.a.size();
        const double sizeB = pair.b.size();
        if (crossAtMostOnce(pair)) {
            const Nearest nearest = nearestOf(pair.a, pair.b);
            if (nearest.distance <= tolerance_) crossings_.push_back(nearest.point);
        } else if (std::max(sizeA, sizeB) <= leafSize_) {
            const Nearest nearest = nearestOf(pair.a, pair.b);
            if (nearest.distance <= tolerance_) touches_.push_back(nearest);
        } else if (sizeA >= sizeB) {
            const auto [first, second] = halves(pair.a);
            add(first, pair.b);
            add(second, pair.b);
        } else {
            const auto [first, second] = halves(pair.b);
            add(pair.a, first);
            add(pair.a, second);
        }
    }

    static bool crossAtMostOnce(const Pair& pair) {
        if (!pair.a.isStraight() || !pair.b.isStraight()) return false;
        constexpr double kSine = 0.15; // More than both may bend.
        const AcGeVector3d a = pair.a.chord();
        const AcGeVector3d b = pair.b.chord();
        return a.crossProduct(b).lengthSqrd() > kSine * kSine * a.lengthSqrd() * b.lengthSqrd();
    }

    /// Of touches that run into each other only the nearest counts.
    std::vector<AcGePoint3d> finish() {
        std::sort(touches_.begin(), touches_.end(),
                  [](const Nearest& a, const Nearest& b) { return a.distance < b.distance; });
        std::vector<AcGePoint3d> places = crossings_;
        std::vector<bool> taken(touches_.size(), false);
        for (std::size_t i = 0; i < touches_.size(); ++i) {
            if (taken[i]) continue;
            places.push_back(touches_[i].point);
            takeNeighbours(i, taken);
        }
        return places;
    }

    void takeNeighbours(std::size_t first, std::vector<bool>& taken) const {
        std::vector<std::size_t> open{first};
        taken[first] = true;
        while (!open.empty()) {
            const AcGePoint3d here = touches_[open.back()].point;
            open.pop_back();
            for (std::size_t i = 0; i < touches_.size(); ++i) {
                if (taken[i] || touches_[i].point.distanceTo(here) > 4.0 * leafSize_) continue;
                taken[i] = true;
                open.push_back(i);
            }
        }
    }

    double leafSize_;
    double tolerance_;
    std::vector<Pair> pairs_;
    std::vector<AcGePoint3d> crossings_;
    std::vector<Nearest> touches_;
};

/// The curves as seen from `origin`, which keeps the digits of differences far from the world's.
std::vector<Part> partsSeenFrom(const AcGeVector3d& origin,
                                std::span<const RationalBezier> curves) {
    std::vector<Part> parts;
    for (RationalBezier curve : curves) {
        for (Homogeneous& h : curve)
            h.p -= origin * h.w;
        parts.emplace_back(std::move(curve));
    }
    return parts;
}

double greatestSize(const std::vector<Part>& parts) {
    double size = 0.0;
    for (const Part& part : parts)
        size = std::max(size, part.size());
    return size;
}

} // namespace

std::vector<RationalBezier> arcBeziers(const EllipseArc& arc) {
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(arc.sweep) / 1.58)));
    const double half = arc.sweep / count / 2.0;
    const double weight = std::cos(half);
    std::vector<RationalBezier> curves;
    for (int i = 0; i < count; ++i) {
        const double middle = arc.start + half * (2 * i + 1);
        const AcGeVector3d from = arc.pointAt(middle - half).asVector();
        const AcGeVector3d to = arc.pointAt(middle + half).asVector();
        const AcGeVector3d bulge = arc.pointAt(middle) - arc.center;
        // The tangents at both ends meet at the middle's direction, 1 / weight as far out.
        curves.push_back(
            {{from, 1.0}, {arc.center.asVector() * weight + bulge, weight}, {to, 1.0}});
    }
    return curves;
}

std::vector<AcGePoint3d> cutBeziers(std::span<const RationalBezier> a,
                                    std::span<const RationalBezier> b, double tolerance) {
    if (a.empty() || b.empty()) return {};
    const AcGeVector3d origin = a.front().front().p / a.front().front().w;
    const std::vector<Part> first = partsSeenFrom(origin, a);
    const std::vector<Part> second = partsSeenFrom(origin, b);
    constexpr double kLeaf = 1e-6;
    Search search(kLeaf * std::max(greatestSize(first), greatestSize(second)), tolerance);
    for (const Part& ofA : first)
        for (const Part& ofB : second)
            search.add(ofA, ofB);
    std::vector<AcGePoint3d> places = search.run();
    for (AcGePoint3d& place : places)
        place += origin;
    return places;
}

} // namespace headless
