// Lines and arcs as one type, the pieces that polylines are taken apart into.
//
// A piece goes from its start to its end in the drawing's x, y plane; its bulge, tan(sweep / 4), is
// 0 for a line and positive for an arc that turns counter-clockwise. Only x and y take part in any
// test; results lie at the start's height. Angles are in radians from the x axis.
#pragma once

#include <vector>

#include <afxwin.h>
#include <gepnt3d.h>
#include <gept3dar.h>
#include <gevec3d.h>

#include "OrnCore/bulge_segment.h"

class AcDbPolyline;

/// One piece and what can be measured of it.
class AFX_EXT_CLASS CArcLine {
public:
    CArcLine() = default;
    CArcLine(const AcGePoint3d& start, const AcGePoint3d& end, double bulge = 0.0);

    const AcGePoint3d& GetStart() const { return start_; }
    const AcGePoint3d& GetEnd() const { return end_; }
    double GetBulge() const { return bulge_; }
    bool IsArc() const { return bulge_ != 0.0; }

    double GetLength() const;
    /// Direction from start to end, for an arc that of its chord, in [0, 2 pi).
    double GetAngle() const;
    /// The angle an arc turns through, negative when clockwise; 0 for a line.
    double GetSweep() const;
    /// Infinite for a line.
    double GetRadius() const;
    /// False, and the centre untouched, for a line.
    bool GetCenter(AcGePoint3d& center) const;
    /// The point half way along.
    AcGePoint3d GetMidPoint() const;
    /// The point at a fraction of the length, 0 at the start and 1 at the end.
    AcGePoint3d GetPointAt(double fraction) const;
    /// Unit direction of travel at the ends; null for a piece without length.
    AcGeVector3d GetStartTangent() const;
    AcGeVector3d GetEndTangent() const;

    /// The piece as plain values.
    orncore::Segment GetSegment() const;

protected:
    AcGePoint3d At(const AcGePoint2d& point) const { return {point.x, point.y, start_.z}; }

private:
    AcGePoint3d start_;
    AcGePoint3d end_;
    double bulge_ = 0.0;
};

/// A piece and how it stands to points and other pieces.
class AFX_EXT_CLASS ZelArcLine : public CArcLine {
public:
    /// What PtInLine answers.
    enum Side {
        kRight = -2,  // to the right of the direction of travel
        kBeyond = -1, // on the whole line or circle, but off the piece
        kOnEnd = 0,   // at the start or the end
        kOnPiece = 1, // on the piece between its ends
        kLeft = 2     // to the left of the direction of travel
    };

    using CArcLine::CArcLine;

    /// The pieces of a polyline in order, with the closing one when it is marked closed; segments
    /// without length are left out. World coordinates for polylines parallel to the x, y plane,
    /// seen from above: the bulges of a polyline with a downward normal change sign.
    /// @param polyline  open for reading; null has no pieces.
    static std::vector<ZelArcLine> CreateLine(const AcDbPolyline* polyline);

    /// The straight ones of the pieces whose direction, or its opposite, is within `tol` radians of
    /// the angle.
    static std::vector<ZelArcLine> GetParallelLines(const std::vector<ZelArcLine>& pieces,
                                                    double angle, double tol);

    /// Where a point stands to the piece; see Side. A point within `tol` of the line or circle is
    /// on it.
    int PtInLine(const AcGePoint3d& point, double tol) const;

    double GetDistance(const AcGePoint3d& point) const;
    AcGePoint3d GetClosestPoint(const AcGePoint3d& point) const;
    /// True when both are straight and their directions, or opposites, differ by at most `tol`
    /// radians.
    bool IsParallel(const ZelArcLine& other, double tol) const;

    /// Shared points in the order of this piece, and the ends of what the two have in common.
    AcGePoint3dArray GetInterSect(const ZelArcLine& other, double tol) const;
    /// Where the whole lines or circles cross, in the direction of this piece.
    AcGePoint3dArray GetCarrierInterSect(const ZelArcLine& other) const;

    /// Points of the arc at which lines from `point` touch it; none for a line and from inside the
    /// circle.
    AcGePoint3dArray GetTangentPoints(const AcGePoint3d& point) const;
    /// Where the tangents at both ends meet. False, and the corner untouched, for a line and for an
    /// arc of half a circle or more.
    bool GetTangentCorner(AcGePoint3d& corner) const;

    /// The parallel piece at a distance to the left, negative to the right. False, and the result
    /// untouched, when the distance is an arc's radius or more on its inner side.
    bool GetOffset(double distance, ZelArcLine& parallel) const;
    /// The stretch from the point nearest to `from` to the one nearest to `to`, in that direction.
    ZelArcLine GetPart(const AcGePoint3d& from, const AcGePoint3d& to) const;
    ZelArcLine GetReverse() const;
};
