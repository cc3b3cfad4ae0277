#include "view/text_painter.h"

#include "win/code_page.h"

namespace headless {
namespace {

/// Letters are laid out that large, in pixels, and then put into their frame.
constexpr double kTextHeight = 100.0;

/// Below this height in pixels letters are a bar.
constexpr double kReadable = 1.5;

struct FontDescriptionCloser {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};

} // namespace

TextPainter::TextPainter(Canvas& canvas) : canvas_(canvas), fonts_(pango_cairo_font_map_new()) {
    PangoContext* const context = pango_font_map_create_context(fonts_.get());
    pango_cairo_update_context(canvas.cairo(), context);
    layout_.reset(pango_layout_new(context));
    g_object_unref(context);
}

void TextPainter::setFont(const TextFont& font, const FontRequest& look) {
    if (&font == font_ && look == look_) return;
    font_ = &font;
    look_ = look;
    const std::unique_ptr<PangoFontDescription, FontDescriptionCloser> description(
        pango_font_description_new());
    pango_font_description_set_family(description.get(), font.family().c_str());
    pango_font_description_set_weight(description.get(),
                                      look.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(description.get(),
                                     look.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(description.get(),
                                             kTextHeight * font.em() * PANGO_SCALE);
    pango_layout_set_font_description(layout_.get(), description.get());
}

/// Letters are hardly ever higher above their base line, or reach further below it.
bool TextPainter::comesToSheet(const TextFrame& frame) const {
    SheetBox box;
    for (const double rise : {-1.0, 2.0}) {
        box.add(frame.origin + frame.up * rise);
        box.add(frame.origin + frame.up * rise + frame.along);
    }
    return canvas_.box().meets(box);
}

void TextPainter::paint(std::wstring_view text, const TextFont& font, const FontRequest& look,
                        const TextFrame& frame, const PictureColor& color) {
    if (!comesToSheet(frame)) return;
    const Canvas::State state(canvas_);
    cairo_t* const cairo = canvas_.cairo();
    if (frame.up.length() < kReadable) {
        canvas_.moveTo(frame.origin);
        canvas_.lineTo(frame.origin + frame.along);
        canvas_.stroke(color, frame.up.length());
        return;
    }
    const std::string utf8 = toUtf8(text);
    pango_layout_set_text(layout_.get(), utf8.data(), static_cast<int>(utf8.size()));
    setFont(font, look);
    int width = 0;
    int height = 0;
    pango_layout_get_size(layout_.get(), &width, &height);
    if (width <= 0) return;

    const double across = static_cast<double>(width) / PANGO_SCALE;
    cairo_matrix_t place;
    cairo_matrix_init(&place, frame.along.x / across, frame.along.y / across,
                      -frame.up.x / kTextHeight, -frame.up.y / kTextHeight, frame.origin.x,
                      frame.origin.y);
    // A frame without area has no inverse, which would end the whole picture.
    cairo_matrix_t inverse = place;
    if (cairo_matrix_invert(&inverse) != CAIRO_STATUS_SUCCESS) return;
    cairo_transform(cairo, &place);
    const double baseLine =
        static_cast<double>(pango_layout_get_baseline(layout_.get())) / PANGO_SCALE;
    cairo_move_to(cairo, 0.0, -baseLine);
    canvas_.setColor(color);
    pango_cairo_show_layout(cairo, layout_.get());
    canvas_.dropPath();
}

} // namespace headless
