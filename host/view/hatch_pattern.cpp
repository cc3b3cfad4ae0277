#include "view/hatch_pattern.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "ge/ocs.h"

namespace headless {
namespace {

/// A family of parallel lines in the hatch's object coordinates.
struct LineFamily {
    double angle;
    AcGePoint2d base;
    AcGeVector2d offset; // from one line to the next
    std::vector<double> dashes;
};

std::vector<LineFamily> familiesOf(const AcDbHatch& hatch) {
    std::vector<LineFamily> families;
    for (int i = 0; i < hatch.numPatternDefinitions(); ++i) {
        LineFamily family{};
        AcGeDoubleArray dashes;
        if (hatch.getPatternDefinitionAt(i, family.angle, family.base.x, family.base.y,
                                         family.offset.x, family.offset.y, dashes) != Acad::eOk)
            continue;
        for (const double dash : dashes)
            family.dashes.push_back(dash);
        families.push_back(std::move(family));
    }
    return families;
}

SheetBox clippedBox(const Canvas& canvas) {
    SheetBox box;
    cairo_clip_extents(canvas.cairo(), &box.left, &box.top, &box.right, &box.bottom);
    return box;
}

/// A family as the sheet shows it: pixels.
struct SheetFamily {
    AcGePoint2d base;
    AcGeVector2d along; // of length 1
    AcGeVector2d step;  // from one line to the next
    double scale;       // pixels to a unit along the lines
};

class PatternPainter {
public:
    PatternPainter(Canvas& canvas, const SheetMap& map, const AcDbHatch& hatch,
                   const AcGeMatrix3d& toWorld, const Pen& pen)
        : canvas_(canvas), map_(map), toSheet_(toWorld * ocsMatrix(hatch.normal())),
          elevation_(hatch.elevation()), pen_(pen), box_(clippedBox(canvas)) {}

    void draw(const LineFamily& family) const {
        const SheetFamily shown = onSheet(family);
        const double pitch = std::abs(shown.along.x * shown.step.y - shown.along.y * shown.step.x);
        // Closer than this, lines are a grey that an area of one colour shows as well.
        constexpr double kClosest = 0.7;
        const bool finite = std::isfinite(pitch) && std::isfinite(shown.scale) &&
                            std::isfinite(shown.base.x) && std::isfinite(shown.base.y);
        if (box_.isEmpty() || !finite) return;
        if (!(pitch > kClosest)) return tint(pitch);
        // Highlighted, all lines have the dashes of what is highlighted.
        drawLines(shown,
                  pen_.clearsGaps ? dashesOf(pen_.pattern->dashes, pen_.unit)
                                  : dashesOf(family.dashes, shown.scale),
                  pitch);
    }

private:
    AcGeVector2d direction(double x, double y) const {
        return map_(toSheet_ * AcGeVector3d(x, y, 0.0)).asVector();
    }

    SheetFamily onSheet(const LineFamily& family) const {
        const AcGeVector2d along = direction(std::cos(family.angle), std::sin(family.angle));
        const double scale = along.length();
        return {map_(toSheet_ * AcGePoint3d(family.base.x, family.base.y, elevation_)),
                scale > 0.0 ? along / scale : along, direction(family.offset.x, family.offset.y),
                scale};
    }

    std::vector<double> dashesOf(const std::vector<double>& lengths, double scale) const {
        // As with linetypes, what is finer is a grey line drawn at great cost.
        constexpr double kShortest = 2.0;
        std::vector<double> dashes;
        double total = 0.0;
        for (const double length : lengths) {
            const bool isGap = length < 0.0;
            dashes.push_back(std::max(std::abs(length) * scale, isGap ? 0.0 : pen_.width));
            total += dashes.back();
        }
        if (!(total >= kShortest) || !std::isfinite(total)) dashes.clear();
        return dashes;
    }

    void tint(double pitch) const {
        if (!(pitch > 0.0)) return;
        PictureColor pale = pen_.color;
        pale.alpha = static_cast<std::uint8_t>(pale.alpha / 3);
        canvas_.fillAll(pale);
    }

    void drawLines(const SheetFamily& family, const std::vector<double>& dashes,
                   double pitch) const {
        const AcGeVector2d across(-family.along.y, family.along.x);
        const double sense = across.dotProduct(family.step) < 0.0 ? -1.0 : 1.0;
        double first = std::numeric_limits<double>::infinity();
        double last = -first;
        for (const AcGePoint2d& corner : box_.corners()) {
            const double line = across.dotProduct(corner - family.base) * sense / pitch;
            first = std::min(first, line);
            last = std::max(last, line);
        }
        for (double n = std::ceil(first); n <= last; n += 1.0)
            drawLine(family, family.base + family.step * n, dashes);
    }

    /// Strokes one line as far as the box reaches, with its dashes counted from its own base.
    void drawLine(const SheetFamily& family, const AcGePoint2d& base,
                  const std::vector<double>& dashes) const {
        double from = std::numeric_limits<double>::infinity();
        double to = -from;
        for (const AcGePoint2d& corner : box_.corners()) {
            const double reach = family.along.dotProduct(corner - base);
            from = std::min(from, reach);
            to = std::max(to, reach);
        }
        double length = 0.0;
        for (const double dash : dashes)
            length += dash;
        if (length > 0.0) from = std::floor(from / length) * length;
        canvas_.moveTo(base + family.along * from);
        canvas_.lineTo(base + family.along * to);
        canvas_.stroke(pen_.color, pen_.width, dashes);
    }

    Canvas& canvas_;
    const SheetMap& map_;
    AcGeMatrix3d toSheet_;
    double elevation_;
    const Pen& pen_;
    SheetBox box_;
};

} // namespace

void drawHatchPattern(Canvas& canvas, const SheetMap& map, const AcDbHatch& hatch,
                      const AcGeMatrix3d& toWorld, const Pen& pen) {
    const PatternPainter painter(canvas, map, hatch, toWorld, pen);
    for (const LineFamily& family : familiesOf(hatch))
        painter.draw(family);
}

} // namespace headless
