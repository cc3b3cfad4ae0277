#include "ed/entity_selection.h"

#include "db/fault_hook.h"
#include "db/state.h"
#include "ed/entity_pick.h"

using namespace headless;

int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point) {
    const AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    const PromptRules rules = takeRules();
    if (entity == nullptr || point == nullptr) return RTERROR;
    if (db == nullptr) return RTCAN; // Callers ask again after an error, which would never end.
    if (FaultHook::fails("acedEntSel")) return failWith(HostError::none);
    const EntityPick pick = askEntity(*db, prompt, rules);
    tell(pick, entity, point);
    return pick.result;
}
