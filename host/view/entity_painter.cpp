#include "view/entity_painter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/object_pointer.h"
#include "db/residence.h"
#include "db/solid.h"
#include "db/sortents_table.h"
#include "db/state.h"
#include "db/text_metrics.h"
#include "db/xline.h"
#include "view/clip_path.h"
#include "view/hatch_pattern.h"

namespace headless {
namespace {

/// Far beyond any drawing that people make, and well within the stack.
constexpr std::size_t kDeepestReference = 128;

/// The block's entities, those drawn first first.
AcDbObjectIdArray drawOrderOf(AcDbBlockTableRecord& block) {
    AcDbObjectIdArray ids;
    for (const AcDbObjectId id : block.entityIds())
        ids.append(id);
    AcDbSortentsTable* order = nullptr;
    if (block.getSortentsTable(order, AcDb::kForRead, false) != Acad::eOk) return ids;
    AcDbObjectIdArray ordered;
    const bool known = order->getFullDrawOrder(ordered) == Acad::eOk && !ordered.isEmpty();
    order->close();
    return known ? ordered : ids;
}

TextFrame frameOf(const AcGePoint3d& origin, const AcGeVector3d& along, const AcGeVector3d& up,
                  const SheetMap& map) {
    const AcGePoint2d a = map(along);
    const AcGePoint2d u = map(up);
    return {map(origin), a.asVector(), u.asVector()};
}

} // namespace

EntityPainter::EntityPainter(Canvas& canvas, const SheetMap& map, const PenScale& scale)
    : canvas_(canvas), map_(map), scale_(scale), texts_(canvas) {}

void EntityPainter::paintSpace(AcDbObjectId block) { paintBlock(block, {}); }

void EntityPainter::paintBlock(AcDbObjectId block, const View& view) {
    AcDbStub* const stub = block;
    const bool recurs =
        std::find(openBlocks_.begin(), openBlocks_.end(), stub) != openBlocks_.end();
    if (recurs || openBlocks_.size() >= kDeepestReference) return;
    AcDbBlockTableRecord* record = nullptr;
    if (acdbOpenObject(record, block, AcDb::kForRead) != Acad::eOk) return;
    const AcDbObjectIdArray ids = drawOrderOf(*record);
    record->close();

    openBlocks_.push_back(stub);
    for (const AcDbObjectId id : ids) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) continue;
        if (isDrawn(*entity)) paintEntity(*entity, view);
        entity->close();
    }
    openBlocks_.pop_back();
}

/// Definitions of attributes show only where the attributes are constant, or outside any reference.
bool EntityPainter::isDrawn(const AcDbEntity& entity) const {
    if (entity.visibility() != AcDb::kVisible) return false;
    const auto* const definition = AcDbAttributeDefinition::cast(&entity);
    return definition == nullptr || openBlocks_.size() == 1 || definition->isConstant();
}

Pen EntityPainter::penFor(const Traits& traits) const {
    const Pen pen = penOf(traits, scale_);
    return traits.isHighlighted ? highlighted(pen) : pen;
}

void EntityPainter::stroke(const Pen& pen, double width) {
    constexpr double kSmoothed = 2.0; // pixels beside a line that smoothing greys
    if (pen.clearsGaps) canvas_.strokeAndKeep(kPaper, width + kSmoothed);
    canvas_.stroke(pen.color, width, pen.dashes);
}

void EntityPainter::paintEntity(const AcDbEntity& entity, const View& view) {
    const Traits traits = traitsOf(entity, view.outer);
    if (traits.isFrozen) return;
    const auto* const reference = AcDbBlockReference::cast(&entity);
    if (reference != nullptr) paintAttributes(*reference, view);
    if (traits.isOff && reference == nullptr) return;

    if (const auto* const text = AcDbText::cast(&entity)) return paintText(*text, view, traits);
    if (const auto* const text = AcDbMText::cast(&entity)) return paintMText(*text, view, traits);
    if (const auto* const hatch = AcDbHatch::cast(&entity)) return paintHatch(*hatch, view, traits);
    if (dynamic_cast<const FlatQuad*>(&entity) != nullptr) return paintFilled(entity, view, traits);
    const auto* const polyline = AcDbPolyline::cast(&entity);
    if (polyline != nullptr && paintWide(*polyline, view, traits)) return;
    paintCurves(entity, view, traits);
}

void EntityPainter::paintAttributes(const AcDbBlockReference& reference, const View& view) {
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    for (; !attributes->done(); attributes->step()) {
        AcDbAttribute* attribute = nullptr;
        if (acdbOpenObject(attribute, attributes->objectId(), AcDb::kForRead) != Acad::eOk)
            continue;
        const Traits traits = traitsOf(*attribute, traitsOf(reference, view.outer));
        if (!attribute->isInvisible() && !traits.isOff && !traits.isFrozen)
            paintText(*attribute, view, traits);
        attribute->close();
    }
}

void EntityPainter::paintContents(const GeometrySink::Reference& reference, const Traits& traits) {
    for (int row = 0; row < reference.rows; ++row) {
        for (int column = 0; column < reference.columns; ++column) {
            const AcGeVector3d step = reference.columnStep * column + reference.rowStep * row;
            paintBlock(reference.block,
                       {AcGeMatrix3d::translation(step) * reference.transform, traits});
        }
    }
}

void EntityPainter::paintCurves(const AcDbEntity& entity, const View& view, const Traits& traits) {
    PathSink path(canvas_, map_);
    path.describe(entity, view.toWorld);
    if (AcDbXline::cast(&entity) != nullptr)
        path.describe(
            entity, view.toWorld *
                        AcGeMatrix3d::mirroring(static_cast<const AcDbXline&>(entity).basePoint()));
    const Pen pen = penFor(traits);
    stroke(pen, pen.width);
    for (const AcGePoint2d& point : path.points()) {
        const AcGeVector2d half(pen.width, 0.0);
        canvas_.moveTo(point - half);
        canvas_.lineTo(point + half);
        canvas_.stroke(pen.color, 2.0 * pen.width);
    }
    const auto* const clipped = AcDbBlockReference::cast(&entity);
    for (const GeometrySink::Reference& reference : path.references()) {
        const Canvas::State state(canvas_);
        if (clipped != nullptr) clipTo(canvas_, map_, *clipped, reference.transform);
        paintContents(reference, traits);
    }
}

void EntityPainter::paintFilled(const AcDbEntity& entity, const View& view, const Traits& traits) {
    PathSink path(canvas_, map_);
    path.describe(entity, view.toWorld);
    canvas_.fill(paperColor(traits));
}

/// Draws a polyline as wide as it is; false when it has no width.
bool EntityPainter::paintWide(const AcDbPolyline& polyline, const View& view,
                              const Traits& traits) {
    double start = 0.0;
    double end = 0.0;
    if (polyline.numVerts() < 2 || polyline.getWidthsAt(0, start, end) != Acad::eOk) return false;
    double width = 0.0;
    if (polyline.getConstantWidth(width) != Acad::eOk) width = (start + end) / 2.0;
    const double shrink = std::cbrt(std::abs(view.toWorld.det()));
    const double pixels = width * shrink * map_.scale();
    Pen pen = penFor(traits);
    if (pixels <= pen.width) return false;
    PathSink path(canvas_, map_);
    path.describe(polyline, view.toWorld);
    stroke(pen, pixels);
    return true;
}

void EntityPainter::paintHatch(const AcDbHatch& hatch, const View& view, const Traits& traits) {
    const Canvas::State state(canvas_);
    PathSink path(canvas_, map_);
    path.describe(hatch, view.toWorld);
    if (hatch.isSolidFill()) {
        canvas_.fill(paperColor(traits));
        return;
    }
    canvas_.clip();
    Pen pen = penFor(traits);
    pen.dashes.clear();
    drawHatchPattern(canvas_, map_, hatch, view.toWorld, pen);
}

void EntityPainter::paintText(const AcDbText& text, const View& view, const Traits& traits) {
    const auto* const definition = AcDbAttributeDefinition::cast(&text);
    const std::wstring shown =
        shownText(definition != nullptr && !definition->isConstant() ? definition->tagConst()
                                                                     : text.textStringConst());
    AcGePoint3dArray corners;
    if (shown.empty() || text.getBoundingPoints(corners) != Acad::eOk || corners.length() < 4)
        return;
    for (AcGePoint3d& corner : corners)
        corner.transformBy(view.toWorld);
    const AcDbObjectId style = text.textStyle();
    texts_.paint(shown, fontOfStyle(style), fontRequestOf(style),
                 frameOf(corners[0], corners[1] - corners[0], corners[3] - corners[0], map_),
                 penFor(traits).color);
}

void EntityPainter::paintMText(const AcDbMText& text, const View& view, const Traits& traits) {
    const MTextLayout layout = text.layout();
    const AcGePoint3d corner = text.boxCorner(layout);
    const AcGeVector3d along = text.direction();
    const AcGeVector3d up = text.normal().crossProduct(along);
    FontLibrary& fonts = DbState::current().fonts();
    for (const PlacedRun& placed : layout.runs) {
        const MTextFormat& format = placed.run.format;
        Traits own = traits;
        if (format.color && !format.color->isByLayer() && !format.color->isByBlock())
            own.color = *format.color;
        const AcGePoint3d origin = corner + along * placed.origin.x + up * placed.origin.y;
        const AcGeVector3d lean = along * std::tan(format.oblique);
        const TextFont& font = fonts.find(format.font);
        const auto paint = [&](std::wstring_view letters, double shift, double rise, double width,
                               double height) {
            texts_.paint(letters, font, format.font,
                         frameOf(view.toWorld * (origin + along * shift + up * rise),
                                 view.toWorld * (along * width),
                                 view.toWorld * ((up + lean) * height), map_),
                         penFor(own).color);
        };
        if (!placed.run.isFraction()) {
            paint(placed.run.text, 0.0, 0.0, placed.width, format.height);
            continue;
        }
        const double height = format.height * kFractionHeight;
        const auto paintPart = [&](std::wstring_view letters, double rise) {
            const double width = font.width(letters) * height * format.widthFactor;
            paint(letters, (placed.width - width) / 2.0, rise, width, height);
        };
        paintPart(placed.run.text, height * 0.8);
        paintPart(placed.run.lower, -height * 0.4);
    }
}

} // namespace headless
