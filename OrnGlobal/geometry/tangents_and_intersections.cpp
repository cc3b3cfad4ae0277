// LineTools: outer tangents, directions, stretches and intersections.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <ranges>
#include <span>

#include <dbents.h>
#include <dbpl.h>

#include "OrnCore/zel_dwg.h"
#include "frame/object_handle.h"
#include "geometry/flat_points.h"
#include "geometry/line_tools.h"
#include "geometry/outer_outline.h"

namespace {

constexpr double kTolerance = 1e-6;

std::vector<orncore::OutlineVertex> outlineOf(const std::vector<ZelArcLine>& pieces) {
    std::vector<orncore::OutlineVertex> outline;
    for (const ZelArcLine& piece : pieces)
        outline.push_back({geometry::planar(piece.GetStart()), piece.GetBulge()});
    // The end of an open chain is a vertex of its own.
    if (!pieces.empty()) outline.push_back({geometry::planar(pieces.back().GetEnd()), 0.0});
    return outline;
}

/// An arc or a circle from a start point about a centre, in parts of less than a full circle.
void appendArc(const AcGePoint3d& center, const AcGePoint3d& start, double sweep,
               std::vector<ZelArcLine>& pieces) {
    const double half = sweep / 2.0;
    const double bulge = std::tan(half / 4.0);
    AcGePoint3d from = start;
    for (int i = 0; i < 2; ++i) {
        AcGePoint3d to = from;
        to.rotateBy(half, AcGeVector3d::kZAxis, center);
        pieces.emplace_back(from, to, bulge);
        from = to;
    }
}

std::vector<ZelArcLine> piecesOf(const AcDbEntity& entity) {
    constexpr double kFull = 2.0 * std::numbers::pi;
    if (const auto* polyline = AcDbPolyline::cast(&entity)) return ZelArcLine::CreateLine(polyline);
    std::vector<ZelArcLine> pieces;
    AcGePoint3d start;
    if (const auto* line = AcDbLine::cast(&entity)) {
        pieces.emplace_back(line->startPoint(), line->endPoint());
    } else if (const auto* circle = AcDbCircle::cast(&entity)) {
        circle->getStartPoint(start);
        appendArc(circle->center(), start, kFull, pieces);
    } else if (const auto* arc = AcDbArc::cast(&entity)) {
        double sweep = std::fmod(arc->endAngle() - arc->startAngle(), kFull);
        if (sweep <= 0.0) sweep += kFull;
        arc->getStartPoint(start);
        appendArc(arc->center(), start, arc->normal().z < 0.0 ? -sweep : sweep, pieces);
    }
    return pieces;
}

/// Points by growing distance from a place, each once.
AcGePoint3dArray sortedByDistance(AcGePoint3dArray points, const AcGePoint3d& from) {
    const std::span<AcGePoint3d> all(points.asArrayPtr(),
                                     static_cast<std::size_t>(points.length()));
    std::ranges::stable_sort(all, {}, [&](const AcGePoint3d& p) {
        return CZelDwg::GetLength(geometry::flattened(p), geometry::flattened(from));
    });
    AcGePoint3dArray distinct;
    for (const AcGePoint3d& p : all) {
        if (!LineTools::FindPoint(p, distinct, kTolerance)) distinct.append(p);
    }
    return distinct;
}

std::size_t nearestPiece(const std::vector<ZelArcLine>& pieces, const AcGePoint3d& point) {
    const auto nearest = std::ranges::min_element(
        pieces, {}, [&](const ZelArcLine& piece) { return piece.GetDistance(point); });
    return static_cast<std::size_t>(nearest - pieces.begin());
}

/// A place on a chain of pieces.
struct Station {
    std::size_t piece;
    double position; // see bulge_segment.h

    friend auto operator<=>(const Station&, const Station&) = default;
};

Station stationOf(const std::vector<ZelArcLine>& pieces, const AcGePoint3d& point) {
    const std::size_t nearest = nearestPiece(pieces, point);
    const orncore::Segment segment = pieces[nearest].GetSegment();
    return {nearest,
            orncore::positionOf(segment, geometry::planar(pieces[nearest].GetClosestPoint(point)))};
}

/// The way from one station forward to another, through the chain's end when it lies behind.
std::vector<orncore::Segment> stretchOf(const std::vector<ZelArcLine>& pieces, const Station& from,
                                        const Station& to) {
    std::vector<orncore::Segment> stretch;
    const auto append = [&](std::size_t piece, double start, double end) {
        const orncore::Segment part = orncore::partOf(pieces[piece].GetSegment(), start, end);
        // A stretch that begins or ends at a vertex has no part of the piece beyond it.
        if (orncore::lengthOf(part) > kTolerance) stretch.push_back(part);
    };
    if (from.piece == to.piece && from.position <= to.position) {
        append(from.piece, from.position, to.position);
        return stretch;
    }
    append(from.piece, from.position, 1.0);
    const std::size_t n = pieces.size();
    for (std::size_t i = (from.piece + 1) % n; i != to.piece; i = (i + 1) % n)
        append(i, -1.0, 1.0);
    append(to.piece, -1.0, to.position);
    return stretch;
}

} // namespace

AcGePoint3dArray LineTools::GetPlineOutTangant(const AcDbPolyline* pl) {
    const std::vector<ZelArcLine> pieces = ZelArcLine::CreateLine(pl);
    AcGePoint3dArray corners;
    for (const AcGePoint2d& p : geometry::outerCorners(outlineOf(pieces)))
        corners.append(AcGePoint3d(p.x, p.y, pieces.front().GetStart().z));
    return corners;
}

double LineTools::FindLinesAngle(const std::vector<ZelArcLine>& lines, double tol) {
    std::vector<ZelArcLine> rest = lines;
    std::erase_if(rest, [](const ZelArcLine& line) { return line.IsArc(); });
    double longest = 0.0;
    double found = 0.0;
    while (!rest.empty()) {
        const ZelArcLine first = rest.front();
        double length = 0.0;
        for (const ZelArcLine& line : ZelArcLine::GetParallelLines(rest, first.GetAngle(), tol))
            length += line.GetLength();
        if (length > longest) {
            longest = length;
            found = std::fmod(first.GetAngle(), std::numbers::pi);
        }
        rest.erase(rest.begin());
        std::erase_if(rest, [&](const ZelArcLine& line) { return line.IsParallel(first, tol); });
    }
    return found;
}

void LineTools::GetSectBulgeFromPline(const AcDbObjectId& id, const AcGePoint3d& from,
                                      const AcGePoint3d& to, CArray<double, double>& bulges) {
    const ReadHandle<AcDbPolyline> polyline(id);
    const std::vector<ZelArcLine> pieces = ZelArcLine::CreateLine(polyline.get());
    if (pieces.empty()) return;
    const Station first = stationOf(pieces, from);
    const Station last = stationOf(pieces, to);

    const bool backward = !polyline->isClosed() && last < first;
    if (!backward) {
        for (const orncore::Segment& part : stretchOf(pieces, first, last))
            bulges.Add(part.bulge);
        return;
    }
    for (const orncore::Segment& part : stretchOf(pieces, last, first) | std::views::reverse)
        bulges.Add(-part.bulge);
}

AcGePoint3dArray LineTools::GetInterSectPt(const AcGePoint3d& start, const AcGePoint3d& end,
                                           const AcGePoint3dArray& outline) {
    std::vector<ZelArcLine> sides;
    for (int i = 0; i < outline.length(); ++i)
        sides.emplace_back(outline[i], outline[(i + 1) % outline.length()]);
    return GetInterSectPt(ZelArcLine(start, end), sides);
}

AcGePoint3dArray LineTools::GetInterSectPt(const ZelArcLine& line, const AcDbObjectIdArray& ids) {
    std::vector<ZelArcLine> others;
    for (int i = 0; i < ids.length(); ++i) {
        if (const ReadHandle<AcDbEntity> entity(ids[i]); entity) {
            const std::vector<ZelArcLine> pieces = piecesOf(*entity);
            others.insert(others.end(), pieces.begin(), pieces.end());
        }
    }
    return GetInterSectPt(line, others);
}

AcGePoint3dArray LineTools::GetInterSectPt(const ZelArcLine& line,
                                           const std::vector<ZelArcLine>& others) {
    AcGePoint3dArray points;
    for (const ZelArcLine& other : others)
        points.append(line.GetInterSect(other, kTolerance));
    return sortedByDistance(points, line.GetStart());
}
