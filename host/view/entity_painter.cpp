#include "view/entity_painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/clip_region.h"
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
#include "view/clip_path.h"
#include "view/hatch_pattern.h"

namespace headless {
namespace {

/// Blocks within blocks can hold more than anybody can draw. More parts than that, which take some
/// ten seconds, show as crowds.
constexpr double kMostParts = 1'000'000.0;
/// A reference of no more is drawn part by part all the same.
constexpr double kFewParts = 1000.0;
/// How much of a crowd is drawn of each level: there are several.
constexpr double kShareOfLevel = 0.25;
/// How far off the sheet things are that may show on it: pixels, for wide lines.
constexpr double kMargin = 100.0;
/// The end, whatever a drawing does.
constexpr std::size_t kPatience = 8'000'000;
/// How much of what is left of it a level of a crowd may take: the deeper ones draw the most.
constexpr double kShareOfPatience = 0.1;

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
      partsLeft_(kPatience) {}

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

PictureColor EntityPainter::colorOf(const Traits& traits) const {
    PictureColor color = colorOnSheet(traits, settings_.pen.foreground);
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

void EntityPainter::paintReference(const AcDbBlockReference& reference, const View& view,
                                   const Traits& traits) {
    if (!comesToSheet(reference, view)) return;
    PathSink path(map_);
    path.describe(reference, view.toWorld);
    for (const GeometrySink::Reference& contents : path.references()) {
        paintClipped(reference, contents, traits);
        // Attributes are the reference's own, but every cell shows them.
        for (int row = 0; row < contents.rows; row += strideOf(contents.rowStep))
            for (int column = 0; column < contents.columns && partsLeft_ > 0;
                 column += strideOf(contents.columnStep)) {
                const AcGeVector3d step = contents.columnStep * column + contents.rowStep * row;
                paintAttributes(reference, {AcGeMatrix3d::translation(step) * view.toWorld, {}},
                                traits);
            }
    }
}

void EntityPainter::paintClipped(const AcDbBlockReference& reference,
                                 const GeometrySink::Reference& contents, const Traits& traits) {
    const auto clip = clipRegionOf(reference);
    if (!clip) return paintContents(contents, traits);
    const Canvas::State state(canvas_);
    clipTo(canvas_, map_, *clip, contents.transform);
    // What lies in a clip cannot be put off to where it does not hold.
    Crowd* const outer = std::exchange(crowd_, nullptr);
    paintContents(contents, traits);
    crowd_ = outer;
}

void EntityPainter::paintAttributes(const AcDbBlockReference& reference, const View& view,
                                    const Traits& traits) {
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    for (; !attributes->done() && partsLeft_ > 0; attributes->step()) {
        AcDbAttribute* attribute = nullptr;
        if (acdbOpenObject(attribute, attributes->objectId(), AcDb::kForRead) != Acad::eOk)
            continue;
        --partsLeft_;
        const Traits own = looks_.traitsOf(*attribute, traits);
        if (!attribute->isInvisible() && !own.isOff && !own.isFrozen)
            paintText(*attribute, view, own);
        attribute->close();
    }
}

/// Of cells that fall into one pixel one is drawn.
int EntityPainter::strideOf(const AcGeVector3d& step) const {
    const double pixels = map_(step).asVector().length();
    constexpr double kMostCells = 32767.0;
    return pixels > 0.0 && pixels < 1.0
               ? static_cast<int>(std::min(kMostCells, std::ceil(1.0 / pixels)))
               : 1;
}

void EntityPainter::paintContents(const GeometrySink::Reference& reference, const Traits& traits) {
    const double parts = reference.cells() * facts_.partsOf(reference.block);
    if (crowd_ == nullptr && share_ < 1.0 && parts > kFewParts)
        paintCrowd(reference, traits, std::max(kFewParts, parts * share_ * kShareOfLevel));
    else
        paintCells(reference, traits);
}

void EntityPainter::paintCells(const GeometrySink::Reference& reference, const Traits& traits) {
    // The cells' blocks lie within the same ones.
    const PlacedBlock::Around around =
        crowd_ == nullptr ? nullptr : std::make_shared<const std::vector<AcDbStub*>>(openBlocks_);
    int nextRow = strideOf(reference.rowStep);
    int nextColumn = strideOf(reference.columnStep);
    const int thinning = thinningOf(reference, reference.cells() / nextRow / nextColumn);
    nextRow *= thinning;
    nextColumn *= thinning;
    for (int row = 0; row < reference.rows; row += nextRow) {
        for (int column = 0; column < reference.columns && partsLeft_ > 0; column += nextColumn) {
            --partsLeft_;
            const AcGeVector3d step = reference.columnStep * column + reference.rowStep * row;
            const AcGeMatrix3d toWorld = AcGeMatrix3d::translation(step) * reference.transform;
            if (crowd_ != nullptr)
                putOff({reference.block, toWorld, traits, around});
            else
                paintBlock(reference.block, {toWorld, traits});
        }
    }
}

/// Level by level: what lies on the same pixels once, a speck for what is smaller than a pixel, and
/// of more than that a sample, so that all of the crowd is there whatever its size. The draw order
/// counts within a block.
void EntityPainter::paintCrowd(const GeometrySink::Reference& reference, const Traits& traits,
                               double parts) {
    const std::vector<AcDbStub*> outer = openBlocks_;
    Specks* const outerSpecks = specks_;
    Specks specks;
    specks_ = &specks;
    Crowd next(map_, facts_);
    crowd_ = &next;
    paintCells(reference, traits);
    while (!next.isEmpty()) {
        const double most = kShareOfPatience * static_cast<double>(partsLeft_);
        for (const PlacedBlock& placed : next.take(std::min(parts, most))) {
            openBlocks_ = *placed.around;
            paintBlock(placed.block, {placed.toWorld, placed.traits});
        }
    }
    crowd_ = nullptr;
    specks_ = outerSpecks;
    openBlocks_ = outer;
}

/// Leaves a block to the next level of the crowd, unless nothing of it needs more than a speck.
void EntityPainter::putOff(PlacedBlock placed) {
    const SheetBox shown = boxOnSheet(facts_.boxOf(placed.block), placed.toWorld, map_);
    if (!shown.isEmpty() && !canvas_.box().grownBy(kMargin).meets(shown)) return;
    if (isSpeck(shown))
        paintSpeck(placed, {shown.left, shown.top});
    else
        crowd_->add(std::move(placed));
}

/// By how many columns and rows to go on, so that a crowd has room for the cells of an array.
/// Specks take none, and fewer than the sheet has pixels.
int EntityPainter::thinningOf(const GeometrySink::Reference& reference, double cells) {
    constexpr double kMostCells = 500'000.0;
    const bool fits = crowd_ == nullptr || cells <= kMostCells ||
                      isSpeck(boxOnSheet(facts_.boxOf(reference.block), reference.transform, map_));
    return fits ? 1 : static_cast<int>(std::ceil(std::sqrt(cells / kMostCells)));
}

void EntityPainter::paintSpeck(const PlacedBlock& placed, const AcGePoint2d& at) {
    int tries = 64; // of entities that may all be hidden
    const std::optional<Traits> look = firstLook(placed.block, placed.traits, tries);
    if (!look) return;
    const Pen pen = penFor(*look, {placed.toWorld, placed.traits});
    const std::uint32_t color = static_cast<std::uint32_t>(pen.color.red) << 16U |
                                static_cast<std::uint32_t>(pen.color.green) << 8U | pen.color.blue;
    if (specks_->insert({std::llround(at.x), std::llround(at.y), color}).second) paintDot(at, pen);
}

/// What shows first of a block, through its references.
std::optional<Traits> EntityPainter::firstLook(AcDbObjectId block, const Traits& outer,
                                               int& tries) {
    for (const AcDbObjectId id : drawOrder(block)) {
        if (tries-- <= 0) return std::nullopt;
        const auto* const entity = Residence::peek<AcDbEntity>(id);
        if (entity == nullptr || entity->isErased() || !isDrawn(*entity) ||
            !isShownInReferences(*entity))
            continue;
        const Traits traits = looks_.traitsOf(*entity, outer);
        if (traits.isFrozen) continue;
        const auto* const reference = AcDbBlockReference::cast(entity);
        if (reference != nullptr) {
            if (const auto inner = firstLook(reference->blockOf(), traits, tries)) return inner;
        } else if (!traits.isOff) {
            return traits;
        }
    }
    return std::nullopt;
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
        fillAreas(path.areas(), colorOf(traits));
    strokeLines(path.lines(), pen);
    if (AcDbPoint::cast(&entity) != nullptr)
        for (const AcGePoint2d& point : path.points())
            paintPoint(point, pen);
    for (const GeometrySink::Reference& reference : path.references())
        paintContents(reference, traits);
}

void EntityPainter::paintPoint(const AcGePoint2d& at, const Pen& pen) {
    if (isDot(settings_.points)) return paintDot(at, {pen.color, 2.0 * pen.width, nullptr, 1.0});
    SheetPath mark;
    addMark(mark, at, settings_.points);
    strokeLines(mark, {pen.color, pen.width, nullptr, 1.0});
}

bool EntityPainter::isOnSheet(const SheetPath& path, double margin) const {
    return !path.isEmpty() && canvas_.box().grownBy(margin).meets(path.box());
}

/// False for a reference that shows nothing on the sheet.
bool EntityPainter::comesToSheet(const AcDbEntity& reference, const View& view) const {
    AcDbExtents box;
    if (reference.getGeomExtents(box) != Acad::eOk) return true;
    const SheetBox shown = boxOnSheet(box, view.toWorld, map_);
    return shown.isEmpty() || canvas_.box().grownBy(kMargin).meets(shown);
}

void EntityPainter::fillAreas(const std::vector<SheetPath::Line>& areas,
                              const PictureColor& color) {
    // A path takes more than twice as long as two of half its length. What shines through is
    // filled at once all the same, or it would be darker where areas meet.
    constexpr std::size_t kManyCorners = 20'000;
    std::size_t corners = 0;
    for (const SheetPath::Line& area : areas) {
        corners += putPolygonOn(canvas_, area);
        if (corners < kManyCorners || color.alpha != 255) continue;
        canvas_.fill(color, Canvas::Fill::everything);
        corners = 0;
    }
    canvas_.fill(color, Canvas::Fill::everything);
}

void EntityPainter::paintDot(const AcGePoint2d& at, const Pen& pen) {
    const AcGeVector2d half(pen.width / 2.0, 0.0);
    if (!canvas_.box().grownBy(pen.width).meets({at.x, at.y, at.x, at.y})) return;
    canvas_.moveTo(at - half);
    canvas_.lineTo(at + half);
    canvas_.stroke(pen.color, pen.width);
}

void EntityPainter::strokeLines(const SheetPath& lines, const Pen& pen) {
    if (!isOnSheet(lines, pen.width)) return;
    // What is smaller than that shows as a dot, and would take as long as anything to draw.
    constexpr double kDot = 0.25;
    const SheetBox& box = lines.box();
    if (box.width() < kDot && box.height() < kDot) return paintDot({box.left, box.top}, pen);
    if (pen.pattern != nullptr) return strokeDashed(lines, pen);
    // As for areas: a path takes more than twice as long as two of half its length.
    constexpr std::size_t kManyCurves = 500;
    const std::size_t most = pen.color.alpha == 255 ? kManyCurves : SIZE_MAX;
    const auto stroke = [&] { canvas_.stroke(pen.color, pen.width); };
    lines.putOn(canvas_, most, stroke);
    stroke();
}

void EntityPainter::strokeDashed(const SheetPath& lines, const Pen& pen) {
    struct PlacedText {
        const LineText* text;
        AcGePoint2d at;
        AcGeVector2d along;
    };
    if (pen.clearsGaps) {
        constexpr double kSmoothed = 2.0; // pixels beside a line that smoothing greys
        lines.putOn(canvas_);
        canvas_.stroke(settings_.background, pen.width + kSmoothed);
    }
    std::vector<PlacedText> texts;
    const SheetBox visible = canvas_.box().grownBy(pen.width);
    for (const SheetPath::Line& run : lines.runs())
        addDashes(canvas_, *pen.pattern, pen.unit, run, visible, pen.width,
                  [&](const LineText& text, const AcGePoint2d& at, const AcGeVector2d& along) {
                      texts.push_back({&text, at, along});
                  });
    canvas_.stroke(pen.color, pen.width);
    for (const auto& [text, at, along] : texts) {
        const AcGeVector2d left(along.y, -along.x); // y runs down
        const AcGePoint2d origin = at + (along * text->offset.x + left * text->offset.y) * pen.unit;
        const double angle = (text->upright ? 0.0 : std::atan2(-along.y, along.x)) + text->rotation;
        letters_.paint(text->text, text->style, origin, {std::cos(angle), -std::sin(angle)},
                       text->height * pen.unit, pen.color);
    }
}

void EntityPainter::paintFilled(const AcDbEntity& entity, const View& view, const Traits& traits) {
    PathSink path(map_);
    path.describe(entity, view.toWorld);
    // Corners given the wrong way round make two triangles with a gap, as CAD programs show them.
    for (const SheetPath::Line& area : path.areas())
        if (putPolygonOn(canvas_, area) > 0) canvas_.fill(colorOf(traits));
}

void EntityPainter::paintWipeout(const AcDbEntity& entity, const View& view) {
    PathSink path(map_);
    path.describe(entity, view.toWorld);
    if (!isOnSheet(path.lines(), 0.0)) return;
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
        fillAreas(path.areas(), colorOf(filling));
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
    if (!isOnSheet(path.lines(), 0.0)) return;
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
    if (hatch.isSolidFill()) return canvas_.fill(colorOf(traits));
    canvas_.clip();
    drawHatchPattern(canvas_, map_, hatch, view.toWorld, penFor(traits, view));
}

void EntityPainter::paintText(const AcDbText& text, const View& view, const Traits& traits) {
    const auto* const definition = AcDbAttributeDefinition::cast(&text);
    letters_.paint(text,
                   definition != nullptr && !definition->isConstant() ? definition->tagConst()
                                                                      : text.textStringConst(),
                   view.toWorld, colorOf(traits));
}

void EntityPainter::paintMText(const AcDbMText& text, const View& view, const Traits& traits) {
    letters_.paint(text, view.toWorld, colorOf(traits), [&](const AcCmEntityColor& color) {
        Traits own = traits;
        own.color = color;
        return colorOf(own);
    });
}

} // namespace headless
