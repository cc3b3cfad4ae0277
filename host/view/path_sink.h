// Entities' curves as paths on the sheet.
#pragma once

#include <optional>
#include <vector>

#include "db/geometry_sink.h"
#include "view/sheet_map.h"
#include "view/sheet_path.h"

namespace headless {

/// Adds what it receives to paths, pieces that follow each other joined into one line. Texts are
/// left out and references only listed: their contents have looks of their own.
class PathSink : public GeometrySink {
public:
    /// Where linetypes begin anew: with every piece, or only where lines do not go on.
    enum class Runs { eachPiece, throughout };

    explicit PathSink(const SheetMap& map, Runs runs = Runs::eachPiece) : map_(map), runs_(runs) {}

    const SheetPath& lines() const { return lines_; }
    /// Polygons that are filled, each whether or not others cover it.
    const std::vector<SheetPath::Line>& areas() const { return areas_; }
    /// Places of points, which have no path.
    const std::vector<AcGePoint2d>& points() const { return points_; }
    const std::vector<Reference>& references() const { return references_; }

protected:
    void onPoint(const AcGePoint3d& position) override { points_.push_back(map_(position)); }
    void onSegment(const AcGePoint3d& start, const AcGePoint3d& end) override;
    void onCurve(const CurvePiece& piece) override;
    void onText(const std::array<AcGePoint3d, 4>& /*corners*/) override {}
    void onArea(const std::vector<AcGePoint3d>& corners) override;
    void onEndless(const AcGePoint3d& base, const AcGeVector3d& along) override;
    void onReference(const Reference& reference) override { references_.push_back(reference); }

private:
    void goTo(const AcGePoint2d& start);

    const SheetMap& map_;
    Runs runs_;
    SheetPath lines_;
    std::vector<SheetPath::Line> areas_;
    std::vector<AcGePoint2d> points_;
    std::vector<Reference> references_;
    std::optional<AcGePoint2d> first_; // of the line being drawn
    AcGePoint2d last_;
};

} // namespace headless
