// The letters of texts, with the lines under, over and through them.
#pragma once

#include <functional>

#include "db/mtext.h"
#include "db/text.h"
#include "view/sheet_map.h"
#include "view/text_painter.h"

namespace headless {

class Letters {
public:
    Letters(Canvas& canvas, const SheetMap& map) : canvas_(canvas), map_(map), painter_(canvas) {}

    /// @param shown  the text with its control codes.
    void paint(const AcDbText& text, std::wstring_view shown, const AcGeMatrix3d& toWorld,
               const PictureColor& color);
    /// @param colorOf  the colour of letters that have one of their own.
    void paint(const AcDbMText& text, const AcGeMatrix3d& toWorld, const PictureColor& color,
               const std::function<PictureColor(const AcCmEntityColor&)>& colorOf);
    /// A line of letters of a style, in a frame as wide as they are for a text of that height.
    void paint(std::wstring_view text, AcDbObjectId style, const AcGePoint2d& origin,
               const AcGeVector2d& along, double height, const PictureColor& color);

private:
    struct Run;

    void paintRun(const Run& run, const PlacedRun& placed);
    void paintFraction(const Run& run, const PlacedRun& placed);
    void rule(const TextFrame& frame, double from, double to, double height,
              const PictureColor& color);

    Canvas& canvas_;
    const SheetMap& map_;
    TextPainter painter_;
};

} // namespace headless
