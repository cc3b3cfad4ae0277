#include "view/dashes.h"

#include <cmath>

#include "db/linetype_table.h"
#include "db/object_pointer.h"
#include "db/open.h"
#include "db/text_style_table.h"

namespace headless {
namespace {

LineText textAt(const AcDbLinetypeTableRecord& record, int dash) {
    LineText text{record.textAt(dash),          record.shapeStyleAt(dash),
                  record.shapeOffsetAt(dash),   record.shapeScaleAt(dash),
                  record.shapeRotationAt(dash), record.shapeIsUcsOrientedAt(dash)};
    AcDbTextStyleTableRecord* style = nullptr;
    if (acdbOpenObject(style, text.style, AcDb::kForRead) != Acad::eOk) return text;
    if (style->textSize() > 0.0) text.height *= style->textSize();
    style->close();
    return text;
}

/// Walks along one line, now within a dash and now within a gap.
class DashWalker {
public:
    DashWalker(Canvas& canvas, const LinePattern& pattern, double unit, double width,
               const LineTextVisitor& onText)
        : canvas_(canvas), pattern_(pattern), unit_(unit), width_(width), onText_(onText) {}

    void walk(std::span<const AcGePoint2d> line, const SheetBox& visible) {
        total_ = 0.0;
        for (std::size_t i = 0; i + 1 < line.size(); ++i)
            total_ += line[i].distanceTo(line[i + 1]);
        const double period = pattern_.length * unit_;
        const double first = std::max(pattern_.dashes.front(), 0.0) * unit_;
        // Whatever the whole patterns leave over is shared by the first and the last dash.
        end_ = first > 0.0 ? (std::fmod(total_, period) + first) / 2.0 : 0.0;
        lead_ = first > 0.0 ? end_ - first : 0.0;
        if (total_ < period) end_ = total_;

        double reached = 0.0;
        for (std::size_t i = 0; i + 1 < line.size(); ++i) {
            const double length = line[i].distanceTo(line[i + 1]);
            const auto seen = visiblePart(visible, line[i], line[i + 1]);
            if (seen && length > 0.0) {
                start_ = line[i];
                along_ = (line[i + 1] - line[i]) / length;
                offset_ = reached;
                walkStretch(reached + seen->from * length, reached + seen->to * length);
            }
            reached += length;
        }
    }

private:
    AcGePoint2d at(double distance) const { return start_ + along_ * (distance - offset_); }

    void draw(double from, double to) {
        if (from != drawnTo_) canvas_.moveTo(at(from));
        canvas_.lineTo(at(to));
        drawnTo_ = to;
    }

    void walkStretch(double from, double to) {
        if (from < end_) {
            draw(from, std::min(end_, to));
            if (end_ >= to) return;
            finish(0, end_);
            from = end_;
        }
        const double last = std::min(to, end_ > 0.0 ? total_ - end_ : total_);
        if (from < last) walkPattern(from, last);
        if (end_ > 0.0 && to > total_ - end_) draw(std::max(from, total_ - end_), to);
    }

    void walkPattern(double from, double to) {
        const std::vector<double>& dashes = pattern_.dashes;
        const double period = pattern_.length * unit_;
        const double rounding = 1e-9 * period;
        double within = std::fmod(from - lead_, period);
        std::size_t i = 0;
        const auto isPast = [&](double dash) {
            const double length = std::abs(dash) * unit_;
            return length > 0.0 ? within + rounding >= length : within > rounding;
        };
        while (i + 1 < dashes.size() && isPast(dashes[i]))
            within -= std::abs(dashes[i++]) * unit_;
        while (from < to) {
            const double next = from + std::max(0.0, std::abs(dashes[i]) * unit_ - within);
            within = 0.0;
            if (dashes[i] == 0.0)
                draw(from - width_ / 2.0, from + width_ / 2.0);
            else if (dashes[i] > 0.0)
                draw(from, std::min(next, to));
            if (next <= to) finish(i, next);
            from = next;
            i = i + 1 == dashes.size() ? 0 : i + 1;
        }
    }

    void finish(std::size_t dash, double distance) {
        for (const auto& [follows, text] : pattern_.texts)
            if (follows == dash) onText_(text, at(distance), along_);
    }

    Canvas& canvas_;
    const LinePattern& pattern_;
    double unit_;
    double width_;
    const LineTextVisitor& onText_;
    // Distances along the line, in pixels.
    double total_ = 0.0;
    double end_ = 0.0;      // where the first dash ends, and as far from the end the last begins
    double lead_ = 0.0;     // where the pattern would begin
    double offset_ = 0.0;   // of the straight stretch
    double drawnTo_ = -1.0; // where the last dash ended
    AcGePoint2d start_;
    AcGeVector2d along_;
};

} // namespace

LinePattern linePatternOf(AcDbObjectId linetype) {
    LinePattern pattern;
    AcDbLinetypeTableRecord* record = nullptr;
    if (acdbOpenObject(record, linetype, AcDb::kForRead) != Acad::eOk) return pattern;
    for (int i = 0; i < record->numDashes(); ++i) {
        pattern.dashes.push_back(record->dashLengthAt(i));
        pattern.length += std::abs(pattern.dashes.back());
        if (*record->textAt(i) != 0)
            pattern.texts.emplace_back(static_cast<std::size_t>(i), textAt(*record, i));
    }
    record->close();
    if (!(pattern.length > 0.0) || !std::isfinite(pattern.length)) return {};
    return pattern;
}

bool looksSolid(const LinePattern& pattern, double unit) {
    // Finer patterns are a grey line, drawn at great cost.
    constexpr double kShortest = 2.0;
    constexpr double kShortestDash = 0.75;
    const double length = pattern.length * unit;
    return pattern.dashes.empty() || !std::isfinite(length) || !(length >= kShortest) ||
           length < kShortestDash * static_cast<double>(pattern.dashes.size());
}

void addDashes(Canvas& canvas, const LinePattern& pattern, double unit,
               std::span<const AcGePoint2d> line, const SheetBox& visible, double width,
               const LineTextVisitor& onText) {
    DashWalker(canvas, pattern, unit, width, onText).walk(line, visible);
}

} // namespace headless
