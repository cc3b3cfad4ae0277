// What references show, and crowds of more than can be drawn.
#include <algorithm>
#include <cmath>
#include <utility>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/clip_region.h"
#include "db/residence.h"
#include "view/clip_path.h"
#include "view/entity_painter.h"

namespace headless {
namespace {

/// A reference of no more is drawn part by part all the same.
constexpr double kFewParts = 1000.0;
/// How much of a crowd is drawn of each level: there are several.
constexpr double kShareOfLevel = 0.25;
/// How far off the sheet things are that may show on it: pixels, for wide lines.
constexpr double kMargin = 100.0;
/// How much of what is left of it a level of a crowd may take: the deeper ones draw the most.
constexpr double kShareOfPatience = 0.1;

} // namespace

/// False for a reference that shows nothing on the sheet.
bool EntityPainter::comesToSheet(const AcDbEntity& reference, const View& view) const {
    AcDbExtents box;
    if (reference.getGeomExtents(box) != Acad::eOk) return true;
    const SheetBox shown = boxOnSheet(box, view.toWorld, map_);
    return shown.isEmpty() || canvas_.box().grownBy(kMargin).meets(shown);
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
    if (specks_->insert({std::llround(at.x), std::llround(at.y), color}).second)
        lines_.paintDot(at, pen);
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

} // namespace headless
