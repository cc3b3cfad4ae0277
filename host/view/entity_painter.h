// Draws the entities of a space with everything inside their references.
#pragma once

#include <vector>

#include "db/hatch.h"
#include "db/mtext.h"
#include "db/polyline.h"
#include "db/text.h"
#include "view/path_sink.h"
#include "view/pen.h"
#include "view/text_painter.h"

class AcDbBlockReference;
class AcDbBlockTableRecord;

namespace headless {

class EntityPainter {
public:
    EntityPainter(Canvas& canvas, const SheetMap& map, const PenScale& scale);

    /// Draws a block's entities in their draw order, as a space shows them.
    void paintSpace(AcDbObjectId block);

private:
    /// What an entity is seen through.
    struct View {
        AcGeMatrix3d toWorld;
        Traits outer;
    };

    void paintBlock(AcDbObjectId block, const View& view);
    void paintEntity(const AcDbEntity& entity, const View& view);
    void paintContents(const GeometrySink::Reference& reference, const Traits& traits);
    void paintAttributes(const AcDbBlockReference& reference, const View& view);
    void paintCurves(const AcDbEntity& entity, const View& view, const Traits& traits);
    void paintFilled(const AcDbEntity& entity, const View& view, const Traits& traits);
    bool paintWide(const AcDbPolyline& polyline, const View& view, const Traits& traits);
    void paintHatch(const AcDbHatch& hatch, const View& view, const Traits& traits);
    void paintText(const AcDbText& text, const View& view, const Traits& traits);
    void paintMText(const AcDbMText& text, const View& view, const Traits& traits);

    /// Strokes the canvas's path.
    void stroke(const Pen& pen, double width);
    Pen penFor(const Traits& traits) const;
    bool isDrawn(const AcDbEntity& entity) const;

    Canvas& canvas_;
    const SheetMap& map_;
    PenScale scale_;
    TextPainter texts_;
    std::vector<AcDbStub*> openBlocks_; // being drawn, outermost first
};

} // namespace headless
