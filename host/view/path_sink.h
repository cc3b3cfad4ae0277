// Entities' curves as paths on a canvas.
#pragma once

#include <optional>
#include <vector>

#include "db/geometry_sink.h"
#include "view/canvas.h"
#include "view/sheet_map.h"

namespace headless {

/// Adds what it receives to the canvas's path, pieces that follow each other joined into one line.
/// Texts are left out and references only listed: their contents have looks of their own.
class PathSink : public GeometrySink {
public:
    PathSink(Canvas& canvas, const SheetMap& map) : canvas_(canvas), map_(map) {}

    /// Places of points, which have no path.
    const std::vector<AcGePoint2d>& points() const { return points_; }
    const std::vector<Reference>& references() const { return references_; }

protected:
    void onPoint(const AcGePoint3d& position) override { points_.push_back(map_(position)); }
    void onSegment(const AcGePoint3d& start, const AcGePoint3d& end) override;
    void onCurve(const CurvePiece& piece) override;
    void onText(const std::array<AcGePoint3d, 4>& /*corners*/) override {}
    void onEndless(const AcGePoint3d& base, const AcGeVector3d& along) override;
    void onReference(const Reference& reference) override { references_.push_back(reference); }

private:
    void goTo(const AcGePoint3d& start);

    Canvas& canvas_;
    const SheetMap& map_;
    std::vector<AcGePoint2d> points_;
    std::vector<Reference> references_;
    std::optional<AcGePoint3d> first_; // of the line being drawn
    AcGePoint3d last_;
};

} // namespace headless
