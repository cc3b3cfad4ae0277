#include "layerpick/block_search.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <tuple>

#include <dbcurve.h>
#include <dbdim.h>
#include <dbhatch.h>
#include <dbmline.h>
#include <dbsymtb.h>

#include "OrnCore/zel_dwg.h"
#include "blocks/reference_clip.h"
#include "frame/object_handle.h"
#include "layerpick/curve_test.h"
#include "layerpick/hatch_loops.h"
#include "layerpick/layer_of.h"
#include "layerpick/parts.h"

namespace layerpick {
namespace {

bool isReference(const AcDbEntity& entity) { return AcDbBlockReference::cast(&entity) != nullptr; }

bool isText(const AcDbEntity& entity) {
    return AcDbText::cast(&entity) != nullptr || AcDbMText::cast(&entity) != nullptr;
}

bool takes(PickMode mode, const AcDbEntity& entity) {
    switch (mode) {
    case PickMode::curves:
        return AcDbCurve::cast(&entity) != nullptr || AcDbMline::cast(&entity) != nullptr ||
               isReference(entity);
    case PickMode::texts:
        return isText(entity);
    case PickMode::everything:
        break;
    }
    return true;
}

std::optional<AcDbExtents> boxOf(const AcDbEntity& entity) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return std::nullopt;
    return box;
}

/// Blocks within blocks can hold more than anybody can look at: this many entities take about a
/// second, and then a search has found nothing.
constexpr int kPatience = 10'000'000;

/// What is known of the block of one reference while it is searched.
class Level {
public:
    Level(const PickSpot& local, double rotation, const CString& layer, const SearchRules& rules)
        : spot_(local), layer_(layer), rules_(rules) {
        makeSquare(local, rotation, square_);
        square_.getGeomExtents(squareBox_);
        AcDbExtents reach = squareBox_;
        reach.addPoint(local.at);
        const AcGeVector3d margin(1e-5, 1e-5, 0.0); // more than any test's tolerance
        reachFrom_ = reach.minPoint() - margin;
        reachTo_ = reach.maxPoint() + margin;
    }

    /// Takes the block's entities in order until one is hit.
    /// @param patience  how many more may be looked at.
    void walk(AcDbBlockTableRecordIterator& entities, int& patience) {
        for (; !isFound_ && !entities.done() && patience > 0; entities.step(), --patience) {
            AcDbObjectId id;
            AcDbObject* object = nullptr;
            entities.getEntityId(id);
            if (acdbOpenAcDbObject(object, id, AcDb::kForRead) != Acad::eOk) continue;
            const Closing closing(object);
            // A block holds nothing else, and asking costs as much as opening.
            take(*static_cast<const AcDbEntity*>(object));
        }
    }

    /// The hatch with the smallest loop around the spot, or the first one of which a loop crosses
    /// the square.
    CString hatchLayer() const {
        std::map<double, CString> byArea;
        for (const AcDbObjectId& id : hatches_) {
            const ReadHandle<AcDbHatch> hatch(id);
            if (!hatch) continue;
            const CString layer = effectiveLayer(*hatch, layer_);
            if (isExcluded(layer)) continue;
            for (const auto& loop : loopsOf(*hatch)) {
                if (crosses(*loop, square_)) return layer;
                double area = 0.0;
                constexpr double kTolerance = 1e-6;
                if (CZelDwg::PtInClosePolygon(loop.get(), spot_.at, kTolerance) >= 0 &&
                    loop->getArea(area) == Acad::eOk)
                    byArea.emplace(area, layer);
            }
        }
        return byArea.empty() ? CString() : byArea.begin()->second;
    }

    bool isExcluded(const CString& layer) const { return rules_.excluded.count(layer) != 0; }

    CString result;
    std::vector<AcDbObjectId> references;               // those whose boxes were hit,
    std::vector<AcDbObjectId> referencesWithoutExtents; // and those that tell none

private:
    void take(const AcDbEntity& entity) {
        // Of a block with thousands of entities the pick comes near a few: those that it does not
        // are done with here. No piece of a multiline text lies outside the whole.
        AcDbExtents box;
        const bool isBounded = entity.getGeomExtents(box) == Acad::eOk;
        if (isBounded && !(isNear(box) && isHit(box))) return;
        if (!takes(rules_.mode, entity)) return;
        if (AcDbMText::cast(&entity) != nullptr) return takeText(entity);
        if (isBounded)
            hit(entity);
        else if (isReference(entity))
            referencesWithoutExtents.push_back(entity.objectId());
    }

    /// Of a multiline text each piece has a box of its own.
    void takeText(const AcDbEntity& text) {
        for (const auto& piece : partsOf(text)) {
            const auto box = boxOf(*piece);
            if (box && isHit(*box)) return hit(text);
        }
    }

    bool isHit(const AcDbExtents& box) const {
        constexpr double kTolerance = 1e-6;
        return CZelDwg::GetInterSect(box, squareBox_, kTolerance) > 0 || holds(box, spot_.at);
    }

    /// False for nearly all boxes that are not hit, at next to no cost: each coordinate is read
    /// from where it stands, as waiting for a copied point took half the time of a pick.
    bool isNear(const AcDbExtents& box) const {
        return box.minPoint().x <= reachTo_.x && box.maxPoint().x >= reachFrom_.x &&
               box.minPoint().y <= reachTo_.y && box.maxPoint().y >= reachFrom_.y;
    }

    /// The box of the entity was hit; now its kind tells what else must be.
    void hit(const AcDbEntity& entity) {
        if (isReference(entity)) return references.push_back(entity.objectId());
        const CString layer = effectiveLayer(entity, layer_);
        if (isExcluded(layer)) return;
        if (AcDbHatch::cast(&entity) != nullptr) return hatches_.push_back(entity.objectId());
        const bool found =
            isText(entity) || (AcDbDimension::cast(&entity) != nullptr ? somePartHit(entity)
                                                                       : crosses(entity, square_));
        if (!found) return;
        result = layer;
        isFound_ = true;
    }

    bool somePartHit(const AcDbEntity& dimension) const {
        const auto parts = partsOf(dimension);
        return std::any_of(parts.begin(), parts.end(), [this](const auto& part) {
            if (AcDbCurve::cast(part.get()) != nullptr) return crosses(*part, square_);
            const auto box = boxOf(*part);
            return box && isHit(*box);
        });
    }

    bool isFound_ = false;
    PickSpot spot_;
    CString layer_;
    const SearchRules& rules_;
    AcDbPolyline square_;
    AcDbExtents squareBox_;
    AcGePoint3d reachFrom_; // Corners of a rectangle around all that can be hit.
    AcGePoint3d reachTo_;
    std::vector<AcDbObjectId> hatches_;
};

/// Where a reference puts its block, and the block's entities; nothing when the block cannot be
/// opened.
struct Contents {
    Placing placing;
    std::unique_ptr<AcDbBlockTableRecordIterator> entities;
};

std::optional<Contents> contentsOf(const AcDbBlockReference& reference) {
    const ReadHandle<AcDbBlockTableRecord> block(reference.blockTableRecord());
    if (!block) return std::nullopt;
    AcDbBlockTableRecordIterator* entities = nullptr;
    if (block->newIterator(entities) != Acad::eOk) return std::nullopt;
    return Contents{
        {reference.position(), reference.scaleFactors(), reference.rotation(), block->origin()},
        std::unique_ptr<AcDbBlockTableRecordIterator>(entities)};
}

/// Searches one reference and those inside it.
class BlockSearch {
public:
    explicit BlockSearch(const SearchRules& rules) : rules_(rules) {}

    CString inside(const AcDbBlockReference& reference, const CString& parentLayer,
                   const PickSpot& spot) {
        // A damaged drawing may hold a block within itself, or blocks deeper than the stack.
        constexpr std::size_t kDeepest = 500;
        const AcDbObjectId block = reference.blockTableRecord();
        if (std::find(open_.begin(), open_.end(), block) != open_.end()) return CString();
        if (open_.size() == kDeepest) return CString();
        const auto contents = contentsOf(reference);
        if (!contents) return CString();
        const PickSpot local = carriedInto(spot, contents->placing);
        if (const auto clip = blocks::clipOf(reference); clip && !blocks::shows(*clip, local.at))
            return CString();

        const CString layer = effectiveLayer(reference, parentLayer);
        const Search search{block,      local.at.x,     local.at.y,
                            local.at.z, local.aperture, contents->placing.rotation,
                            layer};
        if (misses_.count(search) != 0) return attributeAt(reference, spot.at, layer);

        open_.push_back(block);
        Level level(local, contents->placing.rotation, layer, rules_);
        level.walk(*contents->entities, patience_);
        CString result = level.result;
        if (result.IsEmpty()) result = attributeAt(reference, spot.at, layer);
        if (result.IsEmpty()) result = inAny(level.references, layer, local);
        if (result.IsEmpty()) result = inAny(level.referencesWithoutExtents, layer, local);
        if (result.IsEmpty() && rules_.hatches) result = level.hatchLayer();
        open_.pop_back();
        const bool isPlace = std::isfinite(local.at.x + local.at.y + local.aperture);
        if (result.IsEmpty() && isPlace && !level.references.empty()) misses_.insert(search);
        return result;
    }

private:
    /// Attributes stand where the reference does, so the point is the one before it was carried in.
    CString attributeAt(const AcDbBlockReference& reference, const AcGePoint3d& point,
                        const CString& layer) const {
        if (rules_.mode == PickMode::curves) return CString();
        const std::unique_ptr<AcDbObjectIterator> ids(reference.attributeIterator());
        for (; !ids->done(); ids->step()) {
            const ReadHandle<AcDbAttribute> attribute(ids->objectId());
            if (!attribute) continue;
            const CString own = effectiveLayer(*attribute, layer);
            const auto box = boxOf(*attribute);
            if (rules_.excluded.count(own) == 0 && box && holds(*box, point)) return own;
        }
        return CString();
    }

    CString inAny(const std::vector<AcDbObjectId>& references, const CString& layer,
                  const PickSpot& spot) {
        for (const AcDbObjectId& id : references) {
            const ReadHandle<AcDbBlockReference> nested(id);
            if (!nested) continue;
            const CString result = inside(*nested, layer, spot);
            if (!result.IsEmpty()) return result;
        }
        return CString();
    }

    /// Block, place and aperture in it, rotation and effective layer: all that decides what a
    /// reference hits, its attributes apart.
    using Search = std::tuple<AcDbObjectId, double, double, double, double, double, CString>;

    const SearchRules& rules_;
    std::vector<AcDbObjectId> open_; // The blocks being searched, the outermost first.
    std::set<Search> misses_;        // Of blocks that hold references, which may stand in heaps.
    int patience_ = kPatience;
};

} // namespace

CString layerInside(const AcDbBlockReference& reference, const CString& parentLayer,
                    const PickSpot& spot, const SearchRules& rules) {
    return BlockSearch(rules).inside(reference, parentLayer, spot);
}

} // namespace layerpick
