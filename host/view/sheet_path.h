// Lines and curves in pixels, before they are drawn.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "view/canvas.h"
#include "view/sheet_box.h"

namespace headless {

/// Makes a polygon of straight lines part of the canvas's path, as far as it shows on the sheet.
/// Returns how many corners that took: 0 for a polygon that shows nothing or is none.
std::size_t putPolygonOn(Canvas& canvas, const std::vector<AcGePoint2d>& polygon);

/// Parts of lines and cubic curves, wherever they are: what lies far off the sheet is cut away as
/// it is put on a canvas, which has room for some million pixels only. Places that are no numbers
/// leave a gap.
class SheetPath {
public:
    using Line = std::vector<AcGePoint2d>;

    void moveTo(const AcGePoint2d& p);
    void lineTo(const AcGePoint2d& p);
    void bezierTo(const AcGePoint2d& c1, const AcGePoint2d& c2, const AcGePoint2d& p);
    /// Back to where the part began.
    void close();
    /// A linetype begins anew with what is added next.
    void beginRun();

    bool isEmpty() const { return verbs_.empty(); }
    /// Of all points, those that bend curves too.
    const SheetBox& box() const { return box_; }

    /// Makes it the canvas's path, to be stroked.
    void putOn(Canvas& canvas) const {
        putOn(canvas, SIZE_MAX, [] {});
    }
    /// Makes stretches of so many lines and curves its path, one after the other; `draw` draws each
    /// of them but the last.
    void putOn(Canvas& canvas, std::size_t most, const std::function<void()>& draw) const;
    /// The same to be filled or clipped to.
    void putAreaOn(Canvas& canvas) const;
    /// The parts as chains of straight lines, right to a tenth of a pixel.
    std::vector<Line> parts() const { return flattened(false); }
    /// The same, and every run a chain of its own.
    std::vector<Line> runs() const { return flattened(true); }

private:
    enum class Verb : std::uint8_t { move, line, curve, close, run };

    bool take(const AcGePoint2d& p);
    std::vector<Line> flattened(bool byRun) const;
    void putVisibleOn(Canvas& canvas, const std::function<void()>& step) const;

    std::vector<Verb> verbs_;
    std::vector<AcGePoint2d> points_; // one for a move and a line, three for a curve
    SheetBox box_;
    bool broken_ = true; // the next line has nowhere to begin
};

} // namespace headless
