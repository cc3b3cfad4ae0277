#include "view/line_painter.h"

#include <cmath>

namespace headless {

bool isOnSheet(const Canvas& canvas, const SheetPath& path, double margin) {
    return !path.isEmpty() && canvas.box().grownBy(margin).meets(path.box());
}

void LinePainter::fillAreas(const std::vector<SheetPath::Line>& areas, const PictureColor& color) {
    // A path takes more than twice as long as two of half its length. What shines through is
    // filled at once all the same, or it would be darker where areas meet.
    constexpr std::size_t kManyCorners = 20'000;
    std::size_t corners = 0;
    for (const SheetPath::Line& area : areas) {
        corners += putPolygonOn(canvas_, area);
        if (corners < kManyCorners || color.alpha != 255) continue;
        canvas_.fill(color, Canvas::Fill::everything);
        corners = 0;
    }
    canvas_.fill(color, Canvas::Fill::everything);
}

void LinePainter::paintDot(const AcGePoint2d& at, const Pen& pen) {
    const AcGeVector2d half(pen.width / 2.0, 0.0);
    if (!canvas_.box().grownBy(pen.width).meets({at.x, at.y, at.x, at.y})) return;
    canvas_.moveTo(at - half);
    canvas_.lineTo(at + half);
    canvas_.stroke(pen.color, pen.width);
}

void LinePainter::strokeLines(const SheetPath& lines, const Pen& pen) {
    if (!isOnSheet(canvas_, lines, pen.width)) return;
    // What is smaller than that shows as a dot, and would take as long as anything to draw.
    constexpr double kDot = 0.25;
    const SheetBox& box = lines.box();
    if (box.width() < kDot && box.height() < kDot) return paintDot({box.left, box.top}, pen);
    if (pen.pattern != nullptr) return strokeDashed(lines, pen);
    // As for areas: a path takes more than twice as long as two of half its length.
    constexpr std::size_t kManyCurves = 500;
    const std::size_t most = pen.color.alpha == 255 ? kManyCurves : SIZE_MAX;
    const auto stroke = [&] { canvas_.stroke(pen.color, pen.width); };
    lines.putOn(canvas_, most, stroke);
    stroke();
}

void LinePainter::strokeDashed(const SheetPath& lines, const Pen& pen) {
    struct PlacedText {
        const LineText* text;
        AcGePoint2d at;
        AcGeVector2d along;
    };
    if (pen.clearsGaps) {
        constexpr double kSmoothed = 2.0; // pixels beside a line that smoothing greys
        lines.putOn(canvas_);
        canvas_.stroke(background_, pen.width + kSmoothed);
    }
    std::vector<PlacedText> texts;
    const SheetBox visible = canvas_.box().grownBy(pen.width);
    for (const SheetPath::Line& run : lines.runs())
        addDashes(canvas_, *pen.pattern, pen.unit, run, visible, pen.width,
                  [&](const LineText& text, const AcGePoint2d& at, const AcGeVector2d& along) {
                      texts.push_back({&text, at, along});
                  });
    canvas_.stroke(pen.color, pen.width);
    for (const auto& [text, at, along] : texts) {
        const AcGeVector2d left(along.y, -along.x); // y runs down
        const AcGePoint2d origin = at + (along * text->offset.x + left * text->offset.y) * pen.unit;
        const double angle = (text->upright ? 0.0 : std::atan2(-along.y, along.x)) + text->rotation;
        letters_.paint(text->text, text->style, origin, {std::cos(angle), -std::sin(angle)},
                       text->height * pen.unit, pen.color);
    }
}

} // namespace headless
