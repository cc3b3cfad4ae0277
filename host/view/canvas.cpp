#include "view/canvas.h"

#include <cmath>

#include <cairo-pdf.h>
#include <cairo-svg.h>

namespace headless {
namespace {

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

cairo_surface_t* makeSurface(PictureFormat format, double width, double height,
                             std::string* bytes) {
    switch (format) {
    case PictureFormat::kSvg:
        return cairo_svg_surface_create_for_stream(append, bytes, width, height);
    case PictureFormat::kPdf:
        return cairo_pdf_surface_create_for_stream(append, bytes, width, height);
    case PictureFormat::kPng:
        break;
    }
    return cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(std::lround(width)),
                                      static_cast<int>(std::lround(height)));
}

/// A colour as shares of the brightest.
struct Shares {
    static constexpr double kMost = 255.0;

    double red;
    double green;
    double blue;
    double alpha;

    explicit Shares(const PictureColor& color)
        : red(color.red / kMost), green(color.green / kMost), blue(color.blue / kMost),
          alpha(color.alpha / kMost) {}
};

} // namespace

Canvas::Canvas(PictureFormat format, double width, double height)
    : format_(format), width_(width), height_(height),
      surface_(makeSurface(format, width, height, &bytes_)), cairo_(cairo_create(surface_.get())) {
    cairo_set_fill_rule(cairo(), CAIRO_FILL_RULE_EVEN_ODD);
    cairo_set_line_join(cairo(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo(), CAIRO_LINE_CAP_BUTT);
    // Sixteen steps of grey for the edges: finer ones take half as long again and look the same.
    cairo_set_antialias(cairo(), CAIRO_ANTIALIAS_FAST);
}

void Canvas::setColor(const PictureColor& color) {
    if (color.isStriped) return setStripes(color);
    const Shares shares(color);
    cairo_set_source_rgba(cairo(), shares.red, shares.green, shares.blue, shares.alpha);
}

void Canvas::setStripes(const PictureColor& color) {
    constexpr double kPeriod = 6.0; // pixels along x and y
    constexpr double kStripe = 0.6; // of the period
    const std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)> stripes(
        cairo_pattern_create_linear(0.0, 0.0, kPeriod / 2, kPeriod / 2), cairo_pattern_destroy);
    const Shares shares(color);
    const auto stop = [&](double at, double alpha) {
        cairo_pattern_add_color_stop_rgba(stripes.get(), at, shares.red, shares.green, shares.blue,
                                          alpha);
    };
    stop(0.0, shares.alpha);
    stop(kStripe, shares.alpha);
    stop(kStripe, 0.0);
    stop(1.0, 0.0);
    cairo_pattern_set_extend(stripes.get(), CAIRO_EXTEND_REPEAT);
    // Stripes are the sheet's, whatever the letters in them are stretched by.
    cairo_matrix_t transform;
    cairo_get_matrix(cairo(), &transform);
    cairo_identity_matrix(cairo());
    cairo_set_source(cairo(), stripes.get());
    cairo_set_matrix(cairo(), &transform);
}

void Canvas::fillAll(const PictureColor& color) {
    setColor(color);
    cairo_paint(cairo());
}

void Canvas::stroke(const PictureColor& color, double width, std::span<const double> dashes) {
    setColor(color);
    cairo_set_line_width(cairo(), width);
    cairo_set_dash(cairo(), dashes.data(), static_cast<int>(dashes.size()), 0.0);
    cairo_stroke(cairo());
}

void Canvas::fill(const PictureColor& color, Fill rule) {
    setColor(color);
    cairo_set_fill_rule(cairo(),
                        rule == Fill::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(cairo());
    cairo_set_fill_rule(cairo(), CAIRO_FILL_RULE_EVEN_ODD);
}

void Canvas::clip() { cairo_clip(cairo()); }

std::string Canvas::finish() {
    cairo_.reset();
    if (format_ == PictureFormat::kPng)
        cairo_surface_write_to_png_stream(surface_.get(), append, &bytes_);
    cairo_surface_finish(surface_.get());
    return cairo_surface_status(surface_.get()) == CAIRO_STATUS_NO_MEMORY ? std::string()
                                                                          : std::move(bytes_);
}

} // namespace headless
