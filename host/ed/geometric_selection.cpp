#include "ed/geometric_selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "db/attribute.h"
#include "db/block_memory.h"
#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/clip_region.h"
#include "db/curve_piece.h"
#include "db/geometry_sink.h"
#include "db/hatch.h"
#include "db/hatch_islands.h"
#include "db/layer_table.h"
#include "db/residence.h"
#include "ed/region_test.h"
#include "ed/screen.h"
#include "ed/state.h"
#include "ed/view_transform.h"
#include "ed/viewports.h"

namespace headless {

namespace {

AcGePoint2d flat(const AcGePoint3d& point) { return {point.x, point.y}; }

const AcDbLayerTableRecord* layerRecord(AcDbObjectId layer) {
    return Residence::peek<AcDbLayerTableRecord>(layer);
}

bool isShown(const AcDbEntity& entity, AcDbObjectId layer) {
    if (entity.visibility() == AcDb::kInvisible) return false;
    const auto* const record = layerRecord(layer);
    return record == nullptr || (record->showsEntities() && !record->isHiddenLayer());
}

bool meet(const Extents2d& a, const Extents2d& b) {
    return a.min.x <= b.max.x && a.max.x >= b.min.x && a.min.y <= b.max.y && a.max.y >= b.min.y;
}

/// The box of an entity, which stands in a block, as seen through a transform; none for what has
/// no bounds.
std::optional<Extents2d> seenBox(const AcDbEntity& entity, const AcGeMatrix3d& transform) {
    AcDbExtents box;
    if (entity.extentsOf(box) != Acad::eOk) return std::nullopt;
    box.transformBy(transform);
    Extents2d seen;
    seen.add(flat(box.minPoint()));
    seen.add(flat(box.maxPoint()));
    return seen;
}

/// What holds all that a transform shows in a box of the view.
Extents3d boxBehind(const Extents2d& seen, const AcGeMatrix3d& toView) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Extents3d box;
    const AcGeMatrix3d back = toView.inverse();
    const bool upright = back.entry[0][2] == 0.0 && back.entry[1][2] == 0.0;
    for (unsigned int axis = upright ? 2 : 0; axis < 3; ++axis)
        box.addRange(axis, -kInfinity, kInfinity);
    if (!upright) return box;
    for (const double x : {seen.min.x, seen.max.x}) {
        for (const double y : {seen.min.y, seen.max.y}) {
            const AcGePoint3d corner = back * AcGePoint3d(x, y, 0.0);
            box.addRange(0, corner.x, corner.x);
            box.addRange(1, corner.y, corner.y);
        }
    }
    return box;
}

/// Edges of a hatch that follow each other, by their indices, and the polygon that they make: by
/// chords, as arcs come nowhere near the points that are looked for inside.
struct HatchLoop {
    std::size_t first = 0;
    std::size_t last = 0; // the one behind
    FlatLoop outline;

    void add(const CurvePiece& piece) {
        constexpr int kChords = 64;
        const int chords = piece.kind() == CurvePiece::Kind::segment ? 1 : kChords;
        const double step = (piece.endParam() - piece.startParam()) / chords;
        for (int i = 0; i < chords; ++i)
            outline.push_back(flat(piece.pointAt(piece.startParam() + step * i)));
        ++last;
    }
};

std::vector<HatchLoop> loopsOf(const std::vector<CurvePiece>& edges) {
    constexpr double kJoint = 1e-6; // of the size of an edge
    std::vector<HatchLoop> loops;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const AcGePoint2d start = flat(edges[i].start());
        const AcGePoint2d former = i == 0 ? start : flat(edges[i - 1].end());
        const double joint = kJoint * (1.0 + start.distanceTo(flat(edges[i].end())));
        const bool goesOn = i > 0 && former.distanceTo(start) <= joint &&
                            former.distanceTo(loops.back().outline.front()) > joint;
        if (!goesOn) loops.push_back({i, i, {}});
        loops.back().add(edges[i]);
    }
    return loops;
}

/// Runs through what an entity shows until its standing to the region is plain.
class PlaceTest : public GeometrySink {
public:
    PlaceTest(const Outline2d& region, PickBy how, AcDbObjectId layerZero)
        : region_(region), how_(how), layerZero_(layerZero) {}

    /// What of the entity was found to touch the region, if anything was.
    struct Touched {
        AcDbObjectId entity;
        AcGeMatrix3d toView;                // from the coordinates of its block
        std::vector<AcDbObjectId> showedBy; // outermost first
    };
    const std::optional<Touched>& touched() const { return touched_; }

    bool takes(const AcDbEntity& entity, const AcGeMatrix3d& toView) {
        standing_ = {};
        touched_.reset();
        walked_.clear();
        patience_ = kPatience;
        layer_ = entity.layerId();
        show(entity, toView);
        if (how_ == PickBy::window) return standing_.touches && !standing_.leaves;
        return standing_.touches;
    }

protected:
    void onPoint(const AcGePoint3d& position) override { onSegment(position, position); }
    void onSegment(const AcGePoint3d& start, const AcGePoint3d& end) override {
        onCurve(CurvePiece::segment(start, end, 0.0, 1.0));
    }
    void onCurve(const CurvePiece& piece) override {
        if (isDecided()) return;
        if (fills_)
            edges_.push_back(piece);
        else
            note(standingOf(piece, region_, clips_));
    }
    void onText(const std::array<AcGePoint3d, 4>& corners) override {
        onArea({corners.begin(), corners.end()});
    }
    void onArea(const std::vector<AcGePoint3d>& corners) override {
        // A wide chain has an area for each of its arcs, and most are elsewhere.
        Extents2d box;
        for (const AcGePoint3d& corner : corners)
            box.add(flat(corner));
        if (clips_.empty() && !meet(box, region_.box())) {
            standing_.leaves = true;
            return;
        }
        std::vector<AcGePoint2d> outline;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            onSegment(corners[i], corners[(i + 1) % corners.size()]);
            outline.push_back(flat(corners[i]));
        }
        const Outline2d area(std::move(outline), Outline2d::Kind::closed);
        noteArea([&](const AcGePoint2d& point) { return area.contains(point); });
    }
    void onEndless(const AcGePoint3d& base, const AcGeVector3d& along) override {
        const AcGePoint2d middle = region_.box().min;
        const double size = region_.box().min.distanceTo(region_.box().max);
        const double seen = std::hypot(along.x, along.y);
        standing_.leaves = true;
        if (seen == 0.0) return onPoint(base);
        const double reach = (flat(base).distanceTo(middle) + size) / seen;
        onSegment(base, base + along * (2.0 * reach));
    }
    void onReference(const Reference& reference) override {
        const auto* const block = Residence::peek<AcDbBlockTableRecord>(reference.block);
        if (block == nullptr) return;
        // The layers that are frozen hide references whole, those that are off only what is on
        // them.
        const auto* const layer = layerRecord(layer_);
        if (layer != nullptr && layer->isFrozenLayer()) return;
        const AcDbObjectId outer = layer_;
        for (int row = 0; row < reference.rows && !isDecided(); ++row) {
            for (int column = 0; column < reference.columns && !isDecided(); ++column) {
                const AcGeVector3d step = reference.columnStep * column + reference.rowStep * row;
                showContents(*block, AcGeMatrix3d::translation(step) * reference.transform, outer);
            }
        }
        layer_ = outer;
    }

private:
    bool isDecided() const { return how_ == PickBy::window ? standing_.leaves : standing_.touches; }
    void note(const Standing& standing) {
        if (standing.touches) noteTouch();
        standing_.leaves = standing_.leaves || standing.leaves;
    }
    void noteTouch() {
        standing_.touches = true;
        if (!touched_) touched_ = {shown_.entity, shown_.toView, shown_.showedBy};
    }

    /// An area whose boundary has been looked at may still hold the whole region, or the chain.
    template <class Holds>
    void noteArea(const Holds& holds) {
        if (isDecided() || how_ == PickBy::window) return;
        for (const AcGePoint2d& point : region_.points()) {
            const bool seen =
                std::all_of(clips_.begin(), clips_.end(),
                            [&](const VisibleRegion& clip) { return clip.shows(point); });
            if (seen && holds(point)) return noteTouch();
        }
    }

    void show(const AcDbEntity& entity, const AcGeMatrix3d& transform) {
        const AcDbObjectId outer = std::exchange(shown_.entity, entity.objectId());
        const AcGeMatrix3d outerView = std::exchange(shown_.toView, transform);
        clipOfNext_ = clipRegionOf(entity);
        const auto* const hatch = AcDbHatch::cast(&entity);
        fills_ = hatch != nullptr;
        edges_.clear();
        describeIn(entity, transform);
        if (hatch != nullptr) noteHatch(*hatch);
        fills_ = false;
        clipOfNext_.reset();
        shown_.entity = outer;
        shown_.toView = outerView;
    }

    void showContents(const AcDbBlockTableRecord& block, const AcGeMatrix3d& transform,
                      AcDbObjectId layer) {
        const std::optional<ClipRegion> clip = clipOfNext_;
        // What shows the same at the same place tells nothing more.
        const Walk walk{block.objectId(), layer, partsOf(transform)};
        losePatience();
        if (walked_.contains(walk)) return;
        const std::size_t before = ++walks_;
        if (clip) pushClip(*clip, transform);
        shown_.showedBy.push_back(shown_.entity);
        const auto visit = [&](AcDbObjectId id) {
            losePatience();
            const auto* const entity = Residence::peek<AcDbEntity>(id);
            if (entity != nullptr && !entity->isErased() && isShownInReferences(*entity))
                showPart(*entity, transform, layer);
            return !isDecided();
        };
        for (const AcDbObjectId id : partsNear(block, transform))
            if (!visit(id)) break;
        shown_.showedBy.pop_back();
        if (clip) clips_.pop_back();
        clipOfNext_ = clip;
        const bool holdsOthers = walks_ != before;
        if (holdsOthers && clips_.empty() && !clip) walked_.insert(walk);
    }

    /// When none is left, whatever may still come is taken to be everywhere.
    void losePatience() {
        if (--patience_ > 0) return;
        noteTouch();
        standing_.leaves = true;
    }

    void showPart(const AcDbEntity& part, const AcGeMatrix3d& transform, AcDbObjectId layer) {
        layer_ = part.layerId() == layerZero_ ? layer : part.layerId();
        // What a reference holds may be on layers of its own.
        const bool holds = AcDbBlockReference::cast(&part) != nullptr;
        if (!isShown(part, holds ? AcDbObjectId() : layer_)) return;
        const auto box = seenBox(part, transform);
        const bool isApart = box && !meet(*box, region_.box());
        if (isApart && clips_.empty()) standing_.leaves = true;
        if (isApart && (clips_.empty() || how_ != PickBy::window)) return;
        show(part, transform);
    }

    void pushClip(const ClipRegion& clip, const AcGeMatrix3d& transform) {
        std::vector<AcGePoint2d> seen;
        for (const AcGePoint3d& point : clip.boundary)
            seen.push_back(flat(transform * point));
        clips_.push_back({Outline2d(std::move(seen), Outline2d::Kind::closed), clip.hidesInside});
    }

    /// The parts of a block that may count, the newest first: of large blocks only those near the
    /// region, unless a window must know of all.
    std::vector<AcDbObjectId> partsNear(const AcDbBlockTableRecord& block,
                                        const AcGeMatrix3d& transform) const {
        const std::span<const AcDbObjectId> all = block.entityIds();
        constexpr std::size_t kFew = 64;
        const bool turnsBack = std::abs(transform.det()) > 1e-12;
        if (all.size() <= kFew || how_ == PickBy::window || !turnsBack)
            return {all.rbegin(), all.rend()};
        return block.memory().index(block).find(boxBehind(region_.box(), transform));
    }

    /// A hatch is where its style says, and so are those of its edges that show.
    void noteHatch(const AcDbHatch& hatch) {
        const std::vector<HatchLoop> loops = loopsOf(edges_);
        std::vector<FlatLoop> outlines;
        for (const HatchLoop& loop : loops)
            outlines.push_back(loop.outline);
        const std::vector<std::size_t> counting = countingLoops(outlines, hatch.styleOf());
        for (const std::size_t index : counting)
            for (std::size_t i = loops[index].first; i < loops[index].last && !isDecided(); ++i)
                note(standingOf(edges_[i], region_, clips_));
        noteArea([&](const AcGePoint2d& point) {
            return std::ranges::count_if(
                       counting,
                       [&](std::size_t index) { return encloses(outlines[index], point); }) %
                       2 ==
                   1;
        });
    }

    const Outline2d& region_;
    PickBy how_;
    AcDbObjectId layerZero_;
    /// A block as it was looked at: with the layer that shows through and the transform's parts.
    using Walk = std::tuple<AcDbStub*, AcDbStub*, std::array<double, 12>>;
    static std::array<double, 12> partsOf(const AcGeMatrix3d& transform) {
        std::array<double, 12> parts;
        for (unsigned int i = 0; i < 12; ++i)
            parts[i] = transform.entry[i / 4][i % 4];
        return parts;
    }

    /// Blocks within blocks can hold more than anybody can look at: this many parts of one entity
    /// take about a second, and then it is taken for what its box is.
    static constexpr int kPatience = 5'000'000;

    Standing standing_;
    std::set<Walk> walked_; // Blocks that hold others, which may stand in heaps.
    std::size_t walks_ = 0;
    int patience_ = kPatience;
    Touched shown_; // What is being described.
    std::optional<Touched> touched_;
    AcDbObjectId layer_; // The effective one of the entity being described.
    std::vector<VisibleRegion> clips_;
    std::optional<ClipRegion> clipOfNext_;
    bool fills_ = false;
    std::vector<CurvePiece> edges_; // Of the hatch being described.
};

} // namespace

std::vector<AcDbObjectId> selectByPlace(const AcDbDatabase& db, PickBy how,
                                        std::vector<AcGePoint2d> outline, const Accepts& accepts,
                                        std::size_t most) {
    std::vector<AcDbObjectId> taken;
    const auto* const space = Residence::peek<AcDbBlockTableRecord>(db.currentSpaceId());
    if (space == nullptr || outline.size() < 2) return taken;
    const auto kind = how == PickBy::fence ? Outline2d::Kind::open : Outline2d::Kind::closed;
    const Outline2d region(std::move(outline), kind);
    const AcGeMatrix3d toView = displayMatrix(currentView(db)).inverse();
    PlaceTest test(region, how, db.layerZero());
    for (const AcDbObjectId id :
         space->memory().index(*space).find(boxBehind(region.box(), toView))) {
        if (taken.size() >= most) break;
        const auto* const entity = Residence::peek<AcDbEntity>(id);
        if (!isShown(*entity, entity->layerId()) || (accepts && !accepts(*entity))) continue;
        if (test.takes(*entity, toView)) taken.push_back(id);
    }
    return taken;
}

std::optional<NestedEntity> entityWithin(const AcDbDatabase& db, AcDbObjectId id,
                                         std::vector<AcGePoint2d> outline) {
    const auto* const entity = Residence::peek<AcDbEntity>(id);
    if (entity == nullptr) return std::nullopt;
    const Outline2d region(std::move(outline), Outline2d::Kind::closed);
    const AcGeMatrix3d fromView = displayMatrix(currentView(db));
    const AcGeMatrix3d toView = fromView.inverse();
    PlaceTest test(region, PickBy::crossing, db.layerZero());
    if (!test.takes(*entity, toView)) return std::nullopt;
    PlaceTest::Touched touched = *test.touched();
    // A reference draws nothing of its own but attributes.
    if (auto* const reference = Residence::peek<AcDbBlockReference>(touched.entity))
        reference->subentities().forEach<AcDbAttribute>([&](const AcDbAttribute& attribute) {
            if (test.takes(attribute, touched.toView)) touched.entity = attribute.objectId();
        });
    const bool isNested = !touched.showedBy.empty();
    return NestedEntity{touched.entity,
                        isNested ? fromView * touched.toView : AcGeMatrix3d::kIdentity,
                        {touched.showedBy.rbegin(), touched.showedBy.rend()}};
}

AcGePoint2d placeInView(const AcDbDatabase& db, const AcGePoint3d& point) {
    return flat(displayMatrix(currentView(db)).inverse() * point);
}

std::vector<AcGePoint2d> boxBetween(const AcGePoint2d& a, const AcGePoint2d& b) {
    return {a, {b.x, a.y}, b, {a.x, b.y}};
}

std::vector<AcGePoint2d> pickBoxAround(const AcDbDatabase& db, const AcGePoint2d& at) {
    const auto pixels = EdState::current().variables.get(L"PICKBOX");
    const auto* const half = pixels ? std::get_if<Adesk::Int16>(&*pixels) : nullptr;
    const double reach =
        (half == nullptr ? 3 : *half) * currentView(db).height / currentScreenArea(db).height;
    return boxBetween({at.x - reach, at.y - reach}, {at.x + reach, at.y + reach});
}

} // namespace headless
