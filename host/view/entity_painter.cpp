#include "view/entity_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/hatch_islands.h"
#include "db/mleader.h"
#include "db/mline.h"
#include "db/object_pointer.h"
#include "db/point.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/raster_image.h"
#include "db/residence.h"
#include "db/solid.h"
#include "db/sortents_table.h"
#include "db/viewport.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"
#include "view/hatch_pattern.h"

namespace headless {
namespace {

/// Blocks within blocks can hold more than anybody can draw. More parts than that, which take some
/// ten seconds, show as crowds.
constexpr double kMostParts = 1'000'000.0;
/// The end, whatever a drawing does.
constexpr std::size_t kPatience = 8'000'000;

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

PathSink::Runs runsOf(const AcDbEntity& entity) {
    const auto* const light = AcDbPolyline::cast(&entity);
    if (light != nullptr && light->hasPlinegen()) return PathSink::Runs::throughout;
    const auto* const old = AcDb2dPolyline::cast(&entity);
    return old != nullptr && old->isLinetypeGenerationOn() ? PathSink::Runs::throughout
                                                           : PathSink::Runs::eachPiece;
}

/// Drawing units; 0 for what is not as wide everywhere.
double evenWidth(const AcDbEntity& entity) {
    double width = 0.0;
    const auto* const light = AcDbPolyline::cast(&entity);
    return light != nullptr && light->getConstantWidth(width) == Acad::eOk ? width : 0.0;
}

/// From the model to where a viewport shows it on its sheet; perspective is passed over.
AcGeMatrix3d sheetMatrix(const AcDbViewport& viewport) {
    const AcGePoint2d seen = viewport.viewCenter();
    return AcGeMatrix3d::translation(viewport.centerPoint().asVector()) *
           AcGeMatrix3d::scaling(viewport.customScale(), AcGePoint3d::kOrigin) *
           AcGeMatrix3d::translation(AcGeVector3d(-seen.x, -seen.y, 0.0)) *
           displayMatrix(viewport.viewOf()).inverse();
}

} // namespace

double EntityPainter::View::stretch() const {
    const auto& m = toWorld.entry;
    return std::sqrt(std::abs(m[0][0] * m[1][1] - m[0][1] * m[1][0]));
}

EntityPainter::EntityPainter(Canvas& canvas, const SheetMap& map, const Settings& settings,
                             Looks& looks)
    : canvas_(canvas), map_(map), settings_(settings), looks_(looks), letters_(canvas, map),
      lines_(canvas, letters_, settings.background), partsLeft_(kPatience) {}

void EntityPainter::paintSpace(AcDbObjectId block) {
    share_ = std::min(1.0, kMostParts / facts_.partsOf(block));
    paintBlock(block, {});
}

const AcDbObjectIdArray& EntityPainter::drawOrder(AcDbObjectId block) {
    AcDbStub* const stub = block;
    if (const auto known = orders_.find(stub); known != orders_.end()) return known->second;
    AcDbObjectIdArray ids;
    AcDbBlockTableRecord* record = nullptr;
    if (acdbOpenObject(record, block, AcDb::kForRead) == Acad::eOk) {
        ids = drawOrderOf(*record);
        record->close();
    }
    return orders_.emplace(stub, std::move(ids)).first->second;
}

void EntityPainter::paintBlock(AcDbObjectId block, const View& view) {
    AcDbStub* const stub = block;
    const bool recurs =
        std::find(openBlocks_.begin(), openBlocks_.end(), stub) != openBlocks_.end();
    if (recurs || openBlocks_.size() >= kDeepestReference) return;
    const AcDbObjectIdArray& ids = drawOrder(block);
    openBlocks_.push_back(stub);
    for (const AcDbObjectId id : ids) {
        if (openBlocks_.size() > 1 && (partsLeft_ == 0 || partsLeft_-- == 0)) break;
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

PictureColor EntityPainter::fillOf(const Traits& traits) const {
    PictureColor color = colorOnSheet(traits, settings_.pen.foreground);
    color.isStriped = traits.isHighlighted;
    return color;
}

PictureColor EntityPainter::inkOf(const Traits& traits) const {
    PictureColor color = inkOnSheet(traits, settings_.pen.foreground);
    color.isStriped = traits.isHighlighted;
    return color;
}

Pen EntityPainter::penFor(const Traits& traits, const View& view) {
    const double ownScale = settings_.linetypesFollowSheet ? viewportScale_ : 1.0;
    return penOf(traits, looks_, settings_.pen, view.stretch() / ownScale);
}

void EntityPainter::paintEntity(const AcDbEntity& entity, const View& view) {
    const Traits traits = looks_.traitsOf(entity, view.outer);
    if (traits.isFrozen) return;
    if (const auto* const reference = AcDbBlockReference::cast(&entity))
        return paintReference(*reference, view, traits);
    if (traits.isOff) return;

    if (const auto* const text = AcDbText::cast(&entity)) return paintText(*text, view, traits);
    if (const auto* const text = AcDbMText::cast(&entity)) return paintMText(*text, view, traits);
    if (const auto* const hatch = AcDbHatch::cast(&entity)) return paintHatch(*hatch, view, traits);
    if (const auto* const mline = AcDbMline::cast(&entity)) return paintMline(*mline, view, traits);
    if (AcDbMLeader::cast(&entity) != nullptr) return paintParts(entity, view, traits);
    if (const auto* const viewport = AcDbViewport::cast(&entity))
        return paintViewport(*viewport, traits);
    if (AcDbWipeout::cast(&entity) != nullptr) return paintWipeout(entity, view);
    if (dynamic_cast<const FlatQuad*>(&entity) != nullptr) return paintFilled(entity, view, traits);
    paintDrawn(entity, view, traits);
}

void EntityPainter::paintDrawn(const AcDbEntity& entity, const View& view, const Traits& traits) {
    PathSink path(map_, runsOf(entity));
    path.describe(entity, view.toWorld);
    Pen pen = penFor(traits, view);
    // Broken lines are broken in all their width.
    const double wide =
        pen.pattern == nullptr ? 0.0 : evenWidth(entity) * view.stretch() * map_.scale();
    if (wide > pen.width)
        pen.width = wide;
    else
        lines_.fillAreas(path.areas(), inkOf(traits));
    lines_.strokeLines(path.lines(), pen);
    if (AcDbPoint::cast(&entity) != nullptr)
        for (const AcGePoint2d& point : path.points())
            paintPoint(point, pen);
    for (const GeometrySink::Reference& reference : path.references())
        paintContents(reference, traits);
}

void EntityPainter::paintPoint(const AcGePoint2d& at, const Pen& pen) {
    if (isDot(settings_.points))
        return lines_.paintDot(at, {pen.color, 2.0 * pen.width, nullptr, 1.0});
    SheetPath mark;
    addMark(mark, at, settings_.points);
    lines_.strokeLines(mark, {pen.color, pen.width, nullptr, 1.0});
}

void EntityPainter::paintFilled(const AcDbEntity& entity, const View& view, const Traits& traits) {
    PathSink path(map_);
    path.describe(entity, view.toWorld);
    // Corners given the wrong way round make two triangles with a gap, as CAD programs show them.
    for (const SheetPath::Line& area : path.areas())
        if (putPolygonOn(canvas_, area) > 0) canvas_.fill(inkOf(traits));
}

void EntityPainter::paintWipeout(const AcDbEntity& entity, const View& view) {
    PathSink path(map_);
    path.describe(entity, view.toWorld);
    if (!isOnSheet(canvas_, path.lines(), 0.0)) return;
    path.lines().putAreaOn(canvas_);
    canvas_.fill(settings_.background);
}

void EntityPainter::paintViewport(const AcDbViewport& viewport, const Traits& traits) {
    const AcDbDatabase* const db = viewport.database();
    const bool isNested = openBlocks_.size() != 1 || viewportScale_ != 1.0;
    if (db == nullptr || isNested || sheetViewport(viewport.blockId()) == viewport.objectId())
        return;
    if (viewport.isOn()) {
        const Canvas::State state(canvas_);
        PathSink bounds(map_);
        const AcDbEntity* const clip = Residence::peek<AcDbEntity>(
            viewport.isNonRectClipOn() ? viewport.nonRectClipEntityId() : viewport.objectId());
        bounds.describe(clip == nullptr ? viewport : *clip);
        bounds.lines().putAreaOn(canvas_);
        canvas_.clip();

        AcDbObjectIdArray frozen;
        viewport.getFrozenLayerList(frozen);
        looks_.freeze(frozen);
        viewportScale_ = viewport.customScale();
        std::vector<AcDbStub*> outer;
        openBlocks_.swap(outer);
        paintBlock(db->modelSpaceId(), {sheetMatrix(viewport), {}});
        openBlocks_.swap(outer);
        viewportScale_ = 1.0;
        looks_.freeze(AcDbObjectIdArray());
    }
    if (!viewport.isNonRectClipOn()) paintDrawn(viewport, {}, traits);
}

void EntityPainter::paintMline(const AcDbMline& mline, const View& view, const Traits& traits) {
    if (const auto fill = mline.fillOf()) {
        PathSink path(map_);
        path.describe(mline, view.toWorld);
        Traits filling = traits;
        if (!fill->isByLayer() && !fill->isByBlock()) filling.color = *fill;
        lines_.fillAreas(path.areas(), fillOf(filling));
    }
    paintParts(mline, view, traits);
}

void EntityPainter::paintParts(const AcDbEntity& whole, const View& view, const Traits& traits) {
    NewEntities parts;
    if (whole.takeApart(parts) != Acad::eOk) return;
    View within = view;
    within.outer.isHighlighted = traits.isHighlighted;
    for (const auto& part : parts)
        paintEntity(*part, within);
}

void EntityPainter::paintHatch(const AcDbHatch& hatch, const View& view, const Traits& traits) {
    PathSink path(map_);
    path.describe(hatch, view.toWorld);
    if (!isOnSheet(canvas_, path.lines(), 0.0)) return;
    const Canvas::State state(canvas_);
    if (hatch.hatchStyle() == AcDbHatch::kNormal || hatch.numLoops() < 2) {
        path.lines().putAreaOn(canvas_);
    } else {
        SheetPath counting;
        const std::vector<FlatLoop> loops = path.lines().parts();
        for (const std::size_t index : countingLoops(loops, hatch.hatchStyle())) {
            const FlatLoop& loop = loops[index];
            counting.moveTo(loop.front());
            for (const AcGePoint2d& corner : loop)
                counting.lineTo(corner);
            counting.close();
        }
        counting.putAreaOn(canvas_);
    }
    if (hatch.isSolidFill()) return canvas_.fill(fillOf(traits));
    canvas_.clip();
    drawHatchPattern(canvas_, map_, hatch, view.toWorld, penFor(traits, view));
}

void EntityPainter::paintText(const AcDbText& text, const View& view, const Traits& traits) {
    const auto* const definition = AcDbAttributeDefinition::cast(&text);
    letters_.paint(text,
                   definition != nullptr && !definition->isConstant() ? definition->tagConst()
                                                                      : text.textStringConst(),
                   view.toWorld, inkOf(traits));
}

void EntityPainter::paintMText(const AcDbMText& text, const View& view, const Traits& traits) {
    letters_.paint(text, view.toWorld, inkOf(traits), [&](const AcCmEntityColor& color) {
        Traits own = traits;
        own.color = color;
        return inkOf(own);
    });
}

} // namespace headless
