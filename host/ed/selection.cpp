#include "ed/selection.h"

#include <string>

#include "db/database.h"
#include "db/entity.h"
#include "db/fault_hook.h"
#include "db/residence.h"
#include "db/state.h"
#include "ed/entity_filter.h"
#include "ed/interactive_selection.h"
#include "ed/selection_modes.h"
#include "ed/selection_telling.h"
#include "ed/state.h"
#include "win/casing.h"

namespace headless {
namespace {

using Ids = std::vector<AcDbObjectId>;

SelectionSets& sets() { return EdState::current().selections; }

std::optional<AcDbObjectId> entityOf(const ads_name& name) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != Acad::eOk || id.isErased()) return std::nullopt;
    if (Residence::peek<AcDbEntity>(id) == nullptr) return std::nullopt;
    return id;
}

SelectionSet* setOf(const Adesk::IntDbId* name) {
    return name == nullptr ? nullptr : sets().find({name[0], name[1]});
}

/// What a selection gives: RTNORM and the entities, or why there are none.
struct Selected {
    int result;
    SelectionSet set;
};

/// @param letters  what stands after the colon of acedSSGet's mode.
/// @param prompts  two texts, for the letter `$`.
std::optional<SelectionDialogueOptions> dialogueOptions(std::wstring_view letters,
                                                        const void* prompts) {
    SelectionDialogueOptions options;
    for (const wchar_t letter : letters) {
        if (letter == L'S') {
            options.single = true;
        } else if (letter == L'L') {
            options.refuseLocked = true;
        } else if (letter == L'$' && prompts != nullptr) {
            const auto* const texts = static_cast<const ACHAR* const*>(prompts);
            options.addPrompt = texts[0] == nullptr ? L"" : texts[0];
            options.removePrompt = texts[1] == nullptr ? L"" : texts[1];
        } else if (letter != L':') {
            return std::nullopt;
        }
    }
    return options;
}

Selected chosenByUser(const AcDbDatabase& db, std::wstring_view mode, const void* prompts,
                      const EntityFilter& filter) {
    const auto options = dialogueOptions(mode, prompts);
    if (!options) return {RTERROR, {}};
    Selected selected{};
    selected.result = chooseEntities(db, filter, *options, selected.set);
    return selected;
}

int giveSet(const Selected& selected, ads_name set) {
    if (selected.result != RTNORM) return selected.result;
    ads_name opened;
    const Ids& ids = selected.set.ids();
    if (ids.empty() || !sets().open(selected.set, opened)) return RTERROR;
    sets().previous = ids;
    set[0] = opened[0];
    set[1] = opened[1];
    return RTNORM;
}

bool isNil(const Adesk::IntDbId* name) { return name == nullptr || (name[0] == 0 && name[1] == 0); }

} // namespace
} // namespace headless

using namespace headless;

int acedSSGet(const ACHAR* mode, const void* point1, const void* point2, const resbuf* filter,
              ads_name set) {
    const AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
    EdState::current().promptRules = {}; // Its keywords are no options here.
    if (db == nullptr || set == nullptr || FaultHook::fails("acedSSGet")) return RTERROR;
    const auto compiled = EntityFilter::compile(filter);
    if (!compiled) return RTERROR;
    std::wstring name = upperCased(mode == nullptr ? L"" : mode);
    if (name.starts_with(L'_')) name.erase(0, 1);
    const bool byUser = name.starts_with(L':') || (name.empty() && point1 == nullptr);
    if (byUser) return giveSet(chosenByUser(*db, name, point1, *compiled), set);
    const auto ids = selectByMode(*db, name, point1, point2, *compiled);
    if (!ids) return RTERROR;
    return giveSet({RTNORM, SelectionSet(*ids, gestureOfMode(*db, name, point1, point2))}, set);
}

int acedSSFree(const ads_name set) {
    return set != nullptr && sets().close({set[0], set[1]}) ? RTNORM : RTERROR;
}

int acedSSLength(const ads_name set, Adesk::Int32* length) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr || length == nullptr || FaultHook::fails("acedSSLength")) return RTERROR;
    *length = static_cast<Adesk::Int32>(found->ids().size());
    return RTNORM;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr || entity == nullptr || index < 0) return RTERROR;
    if (FaultHook::fails("acedSSName")) return RTERROR;
    const auto at = static_cast<std::size_t>(index);
    if (at >= found->ids().size()) return RTERROR;
    entity[0] = found->ids()[at].asOldId();
    entity[1] = 0;
    return RTNORM;
}

int acedSSNameX(resbuf** result, const ads_name set, Adesk::Int32 index) {
    const SelectionSet* found = setOf(set);
    if (result == nullptr) return RTERROR;
    *result = nullptr;
    if (found == nullptr || FaultHook::fails("acedSSNameX")) return RTERROR;
    *result = chainOf(tellSelection(*found, index));
    return *result == nullptr ? RTERROR : RTNORM;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
    const SelectionSet* found = setOf(set);
    if (found == nullptr || entity == nullptr) return RTERROR;
    AcDbObjectId id;
    id.setFromOldId(entity[0]);
    return entity[1] == 0 && found->contains(id) ? RTNORM : RTERROR;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
    if (result == nullptr || FaultHook::fails("acedSSAdd")) return RTERROR;
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
