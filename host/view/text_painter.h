// Letters on a canvas, in the room that the database measured for them.
#pragma once

#include <memory>
#include <string_view>

#include <pango/pangocairo.h>

#include "db/font.h"
#include "view/canvas.h"

namespace headless {

/// Where a line of text stands on the sheet: its base line's start, and the way along its width and
/// up its height, in pixels.
struct TextFrame {
    AcGePoint2d origin;
    AcGeVector2d along;
    AcGeVector2d up;
};

class TextPainter {
public:
    explicit TextPainter(Canvas& canvas);

    /// Draws a line of letters, stretched to its frame.
    void paint(std::wstring_view text, const TextFont& font, const FontRequest& look,
               const TextFrame& frame, const PictureColor& color);

private:
    struct Unref {
        template <class T>
        void operator()(T* object) const {
            g_object_unref(object);
        }
    };

    bool comesToSheet(const TextFrame& frame) const;
    void setFont(const TextFont& font, const FontRequest& look);

    Canvas& canvas_;
    // Of its own: the library's default one is never freed.
    std::unique_ptr<PangoFontMap, Unref> fonts_;
    std::unique_ptr<PangoLayout, Unref> layout_;
    // What the layout is set to.
    const TextFont* font_ = nullptr;
    FontRequest look_;
};

} // namespace headless
