#include "view/sheet_path.h"

#include <cmath>

namespace headless {
namespace {

/// Cairo's coordinates end at 8.3 million.
constexpr double kFarOff = 1e6;

SheetBox roomOf(const Canvas& canvas) { return canvas.box().grownBy(kFarOff); }

/// Where parts that leave the room are cut, no further off than lines are wide.
SheetBox cutAt(const Canvas& canvas) {
    constexpr double kMargin = 1000.0;
    return canvas.box().grownBy(kMargin);
}

double bend(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
    return std::hypot(a.x - 2.0 * b.x + c.x, a.y - 2.0 * b.y + c.y);
}

void addCurve(SheetPath::Line& line, const AcGePoint2d& c1, const AcGePoint2d& c2,
              const AcGePoint2d& end) {
    constexpr double kTolerance = 0.1;
    constexpr double kMost = 1000.0;
    const AcGePoint2d start = line.back();
    const double bent = std::max(bend(start, c1, c2), bend(c1, c2, end));
    const int count =
        static_cast<int>(std::min(kMost, std::ceil(std::sqrt(0.75 * bent / kTolerance)) + 1.0));
    for (int i = 1; i < count; ++i) {
        const double t = static_cast<double>(i) / count;
        const double s = 1.0 - t;
        const double a = s * s * s;
        const double b = 3.0 * s * s * t;
        const double c = 3.0 * s * t * t;
        const double d = t * t * t;
        line.push_back({a * start.x + b * c1.x + c * c2.x + d * end.x,
                        a * start.y + b * c1.y + c * c2.y + d * end.y});
    }
    line.push_back(end);
}

} // namespace

std::size_t putPolygonOn(Canvas& canvas, const std::vector<AcGePoint2d>& polygon) {
    SheetBox box;
    for (const AcGePoint2d& corner : polygon) {
        if (!std::isfinite(corner.x) || !std::isfinite(corner.y)) return 0;
        box.add(corner);
    }
    if (box.isEmpty() || !canvas.box().meets(box)) return 0;
    // Corners nearer than that look like one.
    constexpr double kCloser = 0.05;
    const bool isFar = !roomOf(canvas).holds(box);
    const std::vector<AcGePoint2d> cut =
        isFar ? clippedPolygon(cutAt(canvas), polygon) : std::vector<AcGePoint2d>();
    std::size_t count = 0;
    AcGePoint2d last;
    for (const AcGePoint2d& corner : isFar ? cut : polygon) {
        if (count > 0 && corner.distanceTo(last) < kCloser) continue;
        count++ == 0 ? canvas.moveTo(corner) : canvas.lineTo(corner);
        last = corner;
    }
    if (count > 0) canvas.closePath();
    return count;
}

bool SheetPath::take(const AcGePoint2d& p) {
    const bool good = std::isfinite(p.x) && std::isfinite(p.y);
    if (good) box_.add(p);
    return good;
}

void SheetPath::moveTo(const AcGePoint2d& p) {
    broken_ = !take(p);
    if (broken_) return;
    verbs_.push_back(Verb::move);
    points_.push_back(p);
}

void SheetPath::lineTo(const AcGePoint2d& p) {
    if (broken_) return moveTo(p);
    broken_ = !take(p);
    if (broken_) return;
    verbs_.push_back(Verb::line);
    points_.push_back(p);
}

void SheetPath::bezierTo(const AcGePoint2d& c1, const AcGePoint2d& c2, const AcGePoint2d& p) {
    if (broken_) return moveTo(p);
    broken_ = !(take(c1) && take(c2) && take(p));
    if (broken_) return;
    verbs_.push_back(Verb::curve);
    points_.insert(points_.end(), {c1, c2, p});
}

void SheetPath::close() {
    if (!broken_) verbs_.push_back(Verb::close);
    broken_ = true;
}

void SheetPath::beginRun() {
    if (!broken_) verbs_.push_back(Verb::run);
}

void SheetPath::putVisibleOn(Canvas& canvas, const std::function<void()>& step) const {
    const SheetBox cut = cutAt(canvas);
    for (const Line& line : parts()) {
        bool joined = false;
        for (std::size_t i = 0; i + 1 < line.size(); ++i) {
            const auto seen = visiblePart(cut, line[i], line[i + 1]);
            if (seen && !(joined && seen->from == 0.0))
                canvas.moveTo(line[i] + (line[i + 1] - line[i]) * seen->from);
            if (seen) canvas.lineTo(line[i] + (line[i + 1] - line[i]) * seen->to);
            if (seen) step();
            joined = seen && seen->to == 1.0;
        }
    }
}

void SheetPath::putOn(Canvas& canvas, std::size_t most, const std::function<void()>& draw) const {
    std::size_t count = 0;
    bool isWhole = true; // what was put of the part that is being put
    const auto step = [&] {
        if (++count < most) return;
        const AcGePoint2d last = canvas.currentPoint();
        draw();
        canvas.moveTo(last);
        count = 0;
        isWhole = false;
    };
    if (!roomOf(canvas).holds(box_)) return putVisibleOn(canvas, step);
    AcGePoint2d first;
    const AcGePoint2d* p = points_.data();
    for (const Verb verb : verbs_) {
        switch (verb) {
        case Verb::move:
            first = *p;
            isWhole = true;
            canvas.moveTo(*p++);
            break;
        case Verb::line:
            canvas.lineTo(*p++);
            step();
            break;
        case Verb::curve:
            canvas.bezierTo(p[0], p[1], p[2]);
            p += 3;
            step();
            break;
        case Verb::close:
            isWhole ? canvas.closePath() : canvas.lineTo(first);
            break;
        case Verb::run:
            break;
        }
    }
}

void SheetPath::putAreaOn(Canvas& canvas) const {
    if (roomOf(canvas).holds(box_)) return putOn(canvas);
    for (const Line& line : parts())
        putPolygonOn(canvas, line);
}

std::vector<SheetPath::Line> SheetPath::flattened(bool byRun) const {
    std::vector<Line> lines;
    AcGePoint2d first;
    const AcGePoint2d* p = points_.data();
    const auto begin = [&](const AcGePoint2d& at) {
        if (!lines.empty() && lines.back().size() < 2) lines.pop_back();
        lines.push_back({at});
    };
    for (const Verb verb : verbs_) {
        switch (verb) {
        case Verb::move:
            first = *p;
            begin(*p++);
            break;
        case Verb::line:
            lines.back().push_back(*p++);
            break;
        case Verb::curve:
            addCurve(lines.back(), p[0], p[1], p[2]);
            p += 3;
            break;
        case Verb::close:
            lines.back().push_back(first);
            break;
        case Verb::run:
            if (byRun) begin(AcGePoint2d(lines.back().back()));
            break;
        }
    }
    return lines;
}

} // namespace headless
