#include "ed/selection.h"

#include <algorithm>
#include <ranges>
#include <string>

#include "db/block_table.h"
#include "db/database.h"
#include "db/entity.h"
#include "db/layer_table.h"
#include "db/residence.h"
#include "db/state.h"
#include "ed/entity_filter.h"
#include "ed/selection_modes.h"
#include "ed/state.h"
#include "win/casing.h"

namespace headless {
namespace {

using Ids = std::vector<AcDbObjectId>;

SelectionSets& sets() { return EdState::current().selections; }

const AcDbEntity* livingEntity(AcDbObjectId id) {
    return id.isErased() ? nullptr : Residence::peek<AcDbEntity>(id);
}

/// What a user could select with the mouse.
bool isSelectable(const AcDbEntity& entity) {
    if (entity.visibility() == AcDb::kInvisible) return false;
    const auto* layer = Residence::peek<AcDbLayerTableRecord>(entity.layerId());
    return layer == nullptr ||
           (layer->showsEntities() && !layer->locksEntities() && !layer->isHiddenLayer());
}

/// The entities of a space, the newest first.
template <class Take>
void takeFrom(const AcDbBlockTableRecord& space, Take take) {
    for (const AcDbObjectId id : space.entityIds() | std::views::reverse) {
        const auto* entity = livingEntity(id);
        if (entity != nullptr && !take(id, *entity)) return;
    }
}

Ids wholeDrawing(const AcDbDatabase& db, const EntityFilter& filter, bool selectableOnly) {
    Ids result;
    const auto take = [&](AcDbObjectId id, const AcDbEntity& entity) {
        if ((!selectableOnly || isSelectable(entity)) && filter.matches(entity))
            result.push_back(id);
        return true;
    };
    const auto* blocks = Residence::peek<AcDbBlockTable>(db.blockTableId());
    if (blocks == nullptr) return result;
    for (const AcDbObjectId id : blocks->recordIds()) {
        const auto* block = Residence::peek<AcDbBlockTableRecord>(id);
        if (block != nullptr && !id.isErased() && block->isSpace()) takeFrom(*block, take);
    }
    return result;
}

Ids lastOf(const AcDbDatabase& db, const EntityFilter& filter) {
    Ids result;
    const auto* space = Residence::peek<AcDbBlockTableRecord>(db.currentSpaceId());
    if (space == nullptr) return result;
    takeFrom(*space, [&](AcDbObjectId id, const AcDbEntity& entity) {
        if (!isSelectable(entity)) return true;
        if (filter.matches(entity)) result.push_back(id);
        return false;
    });
    return result;
}

/// Those of a former selection that are still there; its drawing may be closed by now.
Ids stillThere(const AcDbDatabase& db, const Ids& ids, const EntityFilter& filter) {
    Ids result;
    std::ranges::copy_if(ids, std::back_inserter(result), [&](AcDbObjectId id) {
        if (!db.ownsStub(id)) return false;
        const auto* entity = livingEntity(id);
        return entity != nullptr && filter.matches(*entity);
    });
    return result;
}

/// What the mode selects; nothing for a mode that is not known.
std::optional<Ids> selected(const AcDbDatabase& db, std::wstring_view mode,
                            const EntityFilter& filter) {
    if (mode == L"X") return wholeDrawing(db, filter, false);
    if (mode == L"A") return wholeDrawing(db, filter, true);
    if (mode == L"L") return lastOf(db, filter);
    if (mode == L"P") return stillThere(db, sets().previous, filter);
    if (mode == L"I") return stillThere(db, sets().implied, filter);
    return std::nullopt;
}

std::optional<AcDbObjectId> entityOf(const ads_name& name) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk || livingEntity(id) == nullptr) return std::nullopt;
    return id;
}

SelectionSet* setOf(const Adesk::IntDbId* name) {
    return name == nullptr ? nullptr : sets().find({name[0], name[1]});
}

bool isNil(const Adesk::IntDbId* name) { return name == nullptr || (name[0] == 0 && name[1] == 0); }

} // namespace
} // namespace headless

using namespace headless;

int acedSSGet(const ACHAR* mode, const void* point1, const void* point2, const resbuf* filter,
              ads_name set) {
    const AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    if (db == nullptr || set == nullptr) return RTERROR;
    const auto compiled = EntityFilter::compile(filter);
    if (!compiled) return RTERROR;
    std::wstring name = upperCased(mode == nullptr ? L"" : mode);
    if (name.starts_with(L'_')) name.erase(0, 1);
    auto ids = selected(*db, name, *compiled);
    if (!ids) {
        const auto matches = [&](const AcDbEntity& entity) { return compiled->matches(entity); };
        ids = selectByMode(*db, name, point1, point2, matches);
    }
    if (!ids || ids->empty()) return RTERROR;
    ads_name opened;
    if (!sets().open(SelectionSet(*ids), opened)) return RTERROR;
    sets().previous = *ids;
    set[0] = opened[0];
    set[1] = opened[1];
    return RTNORM;
}

int acedSSFree(const ads_name set) {
    return set != nullptr && sets().close({set[0], set[1]}) ? RTNORM : RTERROR;
}

int acedSSLength(const ads_name set, Adesk::Int32* length) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr || length == nullptr) return RTERROR;
    *length = static_cast<Adesk::Int32>(found->ids().size());
    return RTNORM;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr || entity == nullptr || index < 0) return RTERROR;
    const auto at = static_cast<std::size_t>(index);
    if (at >= found->ids().size()) return RTERROR;
    entity[0] = found->ids()[at].asOldId();
    entity[1] = 0;
    return RTNORM;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr || entity == nullptr) return RTERROR;
    AcDbObjectId id;
    id.setFromOldId(entity[0]);
    return entity[1] == 0 && found->contains(id) ? RTNORM : RTERROR;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
    if (result == nullptr) return RTERROR;
    std::optional<AcDbObjectId> id;
    if (!isNil(entity)) {
        id = entityOf({entity[0], entity[1]});
        if (!id) return RTERROR;
    }
    ads_name name;
    SelectionSet* target = setOf(set);
    if (target != nullptr) {
        name[0] = set[0];
        name[1] = set[1];
    } else if (!isNil(set) || !sets().open({}, name)) {
        return RTERROR;
    }
    if (id) sets().find(name)->add(*id);
    result[0] = name[0];
    result[1] = name[1];
    return RTNORM;
}

int acedSSDel(const ads_name entity, const ads_name set) {
    if (acedSSMemb(entity, set) != RTNORM) return RTERROR;
    AcDbObjectId id;
    id.setFromOldId(entity[0]);
    setOf(set)->remove(id);
    return RTNORM;
}

int acedSSSetFirst(const ads_name /*grips*/, const ads_name set) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr && !isNil(set)) return RTERROR;
    sets().implied = found == nullptr ? Ids() : found->ids();
    return RTNORM;
}
