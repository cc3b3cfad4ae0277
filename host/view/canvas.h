// A sheet to draw on: pixels from the upper left corner, kept as PNG, SVG or PDF bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include <cairo.h>

#include "ge/point2d.h"
#include "view/picture_format.h"
#include "view/sheet_box.h"

namespace headless {

struct PictureColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
    bool isStriped = false; // with gaps, as what is filled shows that it is highlighted

    friend bool operator==(const PictureColor&, const PictureColor&) = default;
};

class Canvas {
public:
    /// @param width, height  pixels (PNG, SVG) or points of 1/72 inch (PDF), above 0.
    Canvas(PictureFormat format, double width, double height);
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    double width() const { return width_; }
    double height() const { return height_; }
    SheetBox box() const { return {0.0, 0.0, width_, height_}; }

    void fillAll(const PictureColor& color);

    // A path is built and then drawn once.
    void moveTo(const AcGePoint2d& p) { cairo_move_to(cairo(), p.x, p.y); }
    void lineTo(const AcGePoint2d& p) { cairo_line_to(cairo(), p.x, p.y); }
    void bezierTo(const AcGePoint2d& c1, const AcGePoint2d& c2, const AcGePoint2d& p) {
        cairo_curve_to(cairo(), c1.x, c1.y, c2.x, c2.y, p.x, p.y);
    }
    /// Where the path goes on from.
    AcGePoint2d currentPoint() const {
        AcGePoint2d point;
        cairo_get_current_point(cairo(), &point.x, &point.y);
        return point;
    }
    void closePath() { cairo_close_path(cairo()); }
    void dropPath() { cairo_new_path(cairo()); }

    /// @param dashes  pixels on and off, some above 0; empty for a solid line.
    void stroke(const PictureColor& color, double width, std::span<const double> dashes = {});
    /// What of a path is filled.
    enum class Fill {
        evenOdd,   // not what it goes round an even number of times
        everything // what any part goes round, if all parts turn the same way
    };
    void fill(const PictureColor& color, Fill rule = Fill::evenOdd);
    /// What is drawn until the state is given back shows only within the path, by even and odd.
    void clip();

    /// Keeps the clip and the transform as they are until it ends.
    class State {
    public:
        explicit State(Canvas& canvas) : cairo_(canvas.cairo()) { cairo_save(cairo_); }
        ~State() { cairo_restore(cairo_); }
        State(const State&) = delete;
        State& operator=(const State&) = delete;

    private:
        cairo_t* cairo_;
    };

    // For what draws itself.
    cairo_t* cairo() const { return cairo_.get(); }
    void setColor(const PictureColor& color);

    /// The finished picture; nothing can be drawn any more. Empty when memory ran out.
    [[nodiscard]] std::string finish();

private:
    void setStripes(const PictureColor& color);

    struct SurfaceCloser {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    struct CairoCloser {
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };

    PictureFormat format_;
    double width_;
    double height_;
    std::string bytes_; // that vector formats write
    std::unique_ptr<cairo_surface_t, SurfaceCloser> surface_;
    std::unique_ptr<cairo_t, CairoCloser> cairo_;
};

} // namespace headless
