#include "ed/geometric_selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "db/block_memory.h"
#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/clip_region.h"
#include "db/curve_piece.h"
#include "db/geometry_sink.h"
#include "db/hatch.h"
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

/// Runs through what an entity shows until its standing to the region is plain.
class PlaceTest : public GeometrySink {
public:
    PlaceTest(const Outline2d& region, PickBy how, AcDbObjectId layerZero)
        : region_(region), how_(how), layerZero_(layerZero) {}

    bool takes(const AcDbEntity& entity, const AcGeMatrix3d& toView) {
        standing_ = {};
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
        note(standingOf(piece, region_, clips_));
        if (fills_) loops_.push_back(piece);
    }
    void onText(const std::array<AcGePoint3d, 4>& corners) override {
        onArea({corners.begin(), corners.end()});
    }
    void onArea(const std::vector<AcGePoint3d>& corners) override {
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
        for (int row = 0; row < reference.rows; ++row) {
            for (int column = 0; column < reference.columns; ++column) {
                const AcGeVector3d step = reference.columnStep * column + reference.rowStep * row;
                showContents(*block, AcGeMatrix3d::translation(step) * reference.transform, outer);
            }
        }
        layer_ = outer;
    }

private:
    bool isDecided() const { return how_ == PickBy::window ? standing_.leaves : standing_.touches; }
    void note(const Standing& standing) {
        standing_.touches = standing_.touches || standing.touches;
        standing_.leaves = standing_.leaves || standing.leaves;
    }

    /// An area whose boundary has been looked at may still hold the whole region, or the chain.
    template <class Holds>
    void noteArea(const Holds& holds) {
        if (isDecided() || how_ == PickBy::window) return;
        for (const AcGePoint2d& point : region_.points()) {
            const bool seen =
                std::all_of(clips_.begin(), clips_.end(),
                            [&](const VisibleRegion& clip) { return clip.shows(point); });
            if (seen && holds(point)) {
                standing_.touches = true;
                return;
            }
        }
    }

    void show(const AcDbEntity& entity, const AcGeMatrix3d& transform) {
        clipOfNext_ = clipRegionOf(entity);
        fills_ = AcDbHatch::cast(&entity) != nullptr;
        loops_.clear();
        describeIn(entity, transform);
        if (fills_) noteArea([&](const AcGePoint2d& point) { return loopsHold(point); });
        fills_ = false;
        clipOfNext_.reset();
    }

    void showContents(const AcDbBlockTableRecord& block, const AcGeMatrix3d& transform,
                      AcDbObjectId layer) {
        const std::optional<ClipRegion> clip = clipOfNext_;
        if (clip) pushClip(*clip, transform);
        const auto visit = [&](AcDbObjectId id) {
            const auto* const entity = Residence::peek<AcDbEntity>(id);
            if (entity != nullptr && !entity->isErased() && isShownInReferences(*entity))
                showPart(*entity, transform, layer);
            return !isDecided();
        };
        for (const AcDbObjectId id : partsNear(block, transform))
            if (!visit(id)) break;
        if (clip) clips_.pop_back();
        clipOfNext_ = clip;
    }

    void showPart(const AcDbEntity& part, const AcGeMatrix3d& transform, AcDbObjectId layer) {
        layer_ = part.layerId() == layerZero_ ? layer : part.layerId();
        // What a reference holds may be on layers of its own.
        const bool holds = AcDbBlockReference::cast(&part) != nullptr;
        if (!isShown(part, holds ? AcDbObjectId() : layer_)) return;
        const auto box = seenBox(part, transform);
        if (box && clips_.empty() && !meet(*box, region_.box())) {
            standing_.leaves = true;
            return;
        }
        show(part, transform);
    }

    void pushClip(const ClipRegion& clip, const AcGeMatrix3d& transform) {
        std::vector<AcGePoint2d> seen;
        for (const AcGePoint3d& point : clip.boundary)
            seen.push_back(flat(transform * point));
        clips_.push_back({Outline2d(std::move(seen), Outline2d::Kind::closed), clip.hidesInside});
    }

    /// The parts of a block that may count: of large blocks only those near the region, unless a
    /// window must know of all.
    std::vector<AcDbObjectId> partsNear(const AcDbBlockTableRecord& block,
                                        const AcGeMatrix3d& transform) const {
        const std::span<const AcDbObjectId> all = block.entityIds();
        constexpr std::size_t kFew = 64;
        const bool turnsBack = std::abs(transform.det()) > 1e-12;
        if (all.size() <= kFew || how_ == PickBy::window || !turnsBack)
            return {all.begin(), all.end()};
        return block.memory().index(block).find(boxBehind(region_.box(), transform));
    }

    /// By chords, as the loops come nowhere near the region's points.
    bool loopsHold(const AcGePoint2d& point) const {
        constexpr int kChords = 64;
        bool inside = false;
        for (const CurvePiece& piece : loops_) {
            const int chords = piece.kind() == CurvePiece::Kind::segment ? 1 : kChords;
            AcGePoint2d a = flat(piece.start());
            for (int i = 1; i <= chords; ++i) {
                const double range = piece.endParam() - piece.startParam();
                const AcGePoint2d b = flat(piece.pointAt(piece.startParam() + range * i / chords));
                if ((a.y > point.y) != (b.y > point.y) &&
                    point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x))
                    inside = !inside;
                a = b;
            }
        }
        return inside;
    }

private:
    const Outline2d& region_;
    PickBy how_;
    AcDbObjectId layerZero_;
    Standing standing_;
    AcDbObjectId layer_; // The effective one of the entity being described.
    std::vector<VisibleRegion> clips_;
    std::optional<ClipRegion> clipOfNext_;
    bool fills_ = false;
    std::vector<CurvePiece> loops_;
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
