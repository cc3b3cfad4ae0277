#include "db/intersection.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "db/curve.h"
#include "db/geometry_sink.h"
#include "ge/angles.h"

namespace headless {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class PieceSink : public GeometrySink {
public:
    std::vector<DrawnPiece> pieces;
    bool isFull() const { return pieces.size() + references_ > kMost; }

protected:
    void onPoint(const AcGePoint3d& position) override { onSegment(position, position); }
    void onSegment(const AcGePoint3d& start, const AcGePoint3d& end) override {
        onCurve(CurvePiece::segment(start, end, 0.0, 1.0));
    }
    void onCurve(const CurvePiece& piece) override { pieces.push_back({piece, {}, {}}); }
    void onText(const std::array<AcGePoint3d, 4>& corners) override {
        for (std::size_t i = 0; i < corners.size(); ++i)
            onSegment(corners[i], corners[(i + 1) % corners.size()]);
    }
    void onEndless(const AcGePoint3d& base, const AcGeVector3d& along) override {
        onCurve(CurvePiece::endless(base, along, 0.0, kInfinity));
    }
    void onReference(const Reference& reference) override {
        ++references_;
        if (!isFull()) GeometrySink::onReference(reference);
    }

private:
    static constexpr std::size_t kMost = 2'000'000;
    std::size_t references_ = 0;
};

Extents3d everywhere() {
    Extents3d box;
    for (unsigned int axis = 0; axis < 3; ++axis)
        box.addRange(axis, -kInfinity, kInfinity);
    return box;
}

Extents3d reachedBox(const CurvePiece& piece, PieceReach reach) {
    const bool goesOn = reach.beyondStart || reach.beyondEnd;
    switch (piece.kind()) {
    case CurvePiece::Kind::endless:
        return everywhere();
    case CurvePiece::Kind::segment:
        if (goesOn) return everywhere();
        break;
    case CurvePiece::Kind::arc:
    case CurvePiece::Kind::bulge:
        if (goesOn) {
            EllipseArc around = piece.ellipseArc();
            around.sweep = kFullTurn;
            return ellipseExtents(around);
        }
        break;
    case CurvePiece::Kind::spline:
        break;
    }
    return piece.extents();
}

/// The largest finite coordinate.
double coordinateSize(const std::vector<DrawnPiece>& pieces) {
    double size = 0.0;
    for (const DrawnPiece& drawn : pieces)
        for (const AcGePoint3d& corner : {drawn.box.min, drawn.box.max})
            for (unsigned int axis = 0; axis < 3; ++axis)
                if (std::isfinite(corner[axis])) size = std::max(size, std::abs(corner[axis]));
    return size;
}

/// Calls `visit` with the indices of all pairs whose boxes come within the tolerance, by a sweep
/// along x.
template <class Visit>
void forEachNearPair(const std::vector<DrawnPiece>& first, const std::vector<DrawnPiece>& second,
                     double tolerance, const Visit& visit) {
    const auto byStart = [](const std::vector<DrawnPiece>& pieces) {
        std::vector<std::size_t> order(pieces.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return pieces[a].box.min.x < pieces[b].box.min.x;
        });
        return order;
    };
    const auto near = [&](const Extents3d& a, const Extents3d& b) {
        for (unsigned int axis = 0; axis < 3; ++axis)
            if (a.min[axis] > b.max[axis] + tolerance || b.min[axis] > a.max[axis] + tolerance)
                return false;
        return true;
    };
    const std::vector<std::size_t> orderA = byStart(first);
    const std::vector<std::size_t> orderB = byStart(second);
    std::vector<std::size_t> openA;
    std::vector<std::size_t> openB;
    const auto drop = [&](std::vector<std::size_t>& open, const std::vector<DrawnPiece>& pieces,
                          double x) {
        std::erase_if(open, [&](std::size_t i) { return pieces[i].box.max.x + tolerance < x; });
    };
    for (std::size_t a = 0, b = 0; a < orderA.size() || b < orderB.size();) {
        const bool takeA =
            b == orderB.size() ||
            (a < orderA.size() && first[orderA[a]].box.min.x <= second[orderB[b]].box.min.x);
        if (takeA) {
            const std::size_t i = orderA[a++];
            drop(openB, second, first[i].box.min.x);
            for (const std::size_t j : openB)
                if (near(first[i].box, second[j].box)) visit(i, j);
            openA.push_back(i);
        } else {
            const std::size_t j = orderB[b++];
            drop(openA, first, second[j].box.min.x);
            for (const std::size_t i : openA)
                if (near(first[i].box, second[j].box)) visit(i, j);
            openB.push_back(j);
        }
    }
}

/// Drops all but the first of places within a reach of each other.
std::vector<Meeting> withoutRepeats(std::vector<Meeting> all, double reach) {
    std::vector<std::size_t> order(all.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return all[a].point.x < all[b].point.x; });
    std::vector<bool> repeated(all.size(), false);
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            const Meeting& a = all[order[i]];
            const Meeting& b = all[order[j]];
            if (b.point.x - a.point.x > reach) break;
            if (a.point.distanceTo(b.point) <= reach) repeated[std::max(order[i], order[j])] = true;
        }
    }
    std::vector<Meeting> single;
    for (std::size_t i = 0; i < all.size(); ++i)
        if (!repeated[i]) single.push_back(all[i]);
    return single;
}

} // namespace

std::optional<std::vector<DrawnPiece>> drawnPieces(const AcDbEntity& entity, Extended extended) {
    PieceSink sink;
    sink.describe(entity);
    if (sink.isFull()) return std::nullopt;
    const auto* const curve = AcDbCurve::cast(&entity);
    if (extended == Extended::yes && curve != nullptr && !curve->isClosed() &&
        !sink.pieces.empty()) {
        sink.pieces.front().reach.beyondStart = true;
        sink.pieces.back().reach.beyondEnd = true;
    }
    for (DrawnPiece& drawn : sink.pieces)
        drawn.box = reachedBox(drawn.piece, drawn.reach);
    return std::move(sink.pieces);
}

std::vector<Meeting> meetings(const std::vector<DrawnPiece>& first,
                              const std::vector<DrawnPiece>& second) {
    const double tolerance = AcGeContext::gTol.equalPoint() +
                             1e-12 * std::max(coordinateSize(first), coordinateSize(second));
    std::vector<Meeting> all;
    forEachNearPair(first, second, tolerance, [&](std::size_t i, std::size_t j) {
        const DrawnPiece& a = first[i];
        const DrawnPiece& b = second[j];
        for (const AcGePoint3d& place : cutPieces(a.piece, a.reach, b.piece, b.reach, tolerance))
            all.push_back({place, i});
    });
    std::stable_sort(all.begin(), all.end(),
                     [](const Meeting& a, const Meeting& b) { return a.piece < b.piece; });
    return withoutRepeats(std::move(all), 10.0 * tolerance);
}

} // namespace headless

namespace {

using headless::CurvePiece;
using headless::DrawnPiece;
using headless::Extended;

bool extendsThis(AcDb::Intersect type) {
    return type == AcDb::kExtendThis || type == AcDb::kExtendBoth;
}

bool extendsArgument(AcDb::Intersect type) {
    return type == AcDb::kExtendArg || type == AcDb::kExtendBoth;
}

/// Straight down onto a plane.
AcGeMatrix3d flattening(const AcGePlane& plane) {
    return AcGeMatrix3d::projection(plane, plane.normal());
}

std::vector<DrawnPiece> flattened(const std::vector<DrawnPiece>& pieces,
                                  const AcGeMatrix3d& onPlane) {
    std::vector<DrawnPiece> flat;
    for (const DrawnPiece& drawn : pieces) {
        const CurvePiece piece = drawn.piece.transformed(onPlane);
        flat.push_back({piece, drawn.reach, headless::reachedBox(piece, drawn.reach)});
    }
    return flat;
}

} // namespace

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                            AcGePoint3dArray& points,
                                            Adesk::GsMarker /*thisMarker*/,
                                            Adesk::GsMarker /*otherMarker*/) const {
    if (other == nullptr) return Acad::eNullEntityPointer;
    assertReadEnabled();
    other->assertReadEnabled();
    const auto first = headless::drawnPieces(*this, Extended(extendsThis(type)));
    const auto second = headless::drawnPieces(*other, Extended(extendsArgument(type)));
    if (!first || !second) return Acad::eOutOfMemory;
    for (const headless::Meeting& meeting : headless::meetings(*first, *second))
        points.append(meeting.point);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                            const AcGePlane& plane, AcGePoint3dArray& points,
                                            Adesk::GsMarker /*thisMarker*/,
                                            Adesk::GsMarker /*otherMarker*/) const {
    if (other == nullptr) return Acad::eNullEntityPointer;
    assertReadEnabled();
    other->assertReadEnabled();
    const AcGeMatrix3d onPlane = flattening(plane);
    const auto drawn = headless::drawnPieces(*this, Extended(extendsThis(type)));
    const auto others = headless::drawnPieces(*other, Extended(extendsArgument(type)));
    if (!drawn || !others) return Acad::eOutOfMemory;
    const auto first = flattened(*drawn, onPlane);
    const auto second = flattened(*others, onPlane);
    for (const headless::Meeting& meeting : headless::meetings(first, second)) {
        const DrawnPiece& flat = first[meeting.piece];
        const double param =
            flat.piece.nearestParam(meeting.point, flat.reach.beyondStart, flat.reach.beyondEnd);
        points.append((*drawn)[meeting.piece].piece.pointAt(param));
    }
    return Acad::eOk;
}
