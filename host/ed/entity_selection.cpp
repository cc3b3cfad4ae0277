#include "ed/entity_selection.h"

#include "db/fault_hook.h"
#include "db/state.h"
#include "ed/entity_filter.h"
#include "ed/prompt_answers.h"
#include "ed/selection_modes.h"
#include "ed/state.h"

namespace headless {
namespace {

/// An answer that picks: where, and what was found there.
struct Pick {
    AcGePoint3d at;
    std::optional<AcDbObjectId> entity;
};

/// Nothing for an answer that is no pick.
std::optional<Pick> pickOf(const AcDbDatabase& db, const InputAnswer& answer) {
    std::wstring_view mode;
    Pick pick;
    const auto* const text = std::get_if<std::wstring>(&answer.value);
    if (text != nullptr && Keywords(L"Last").match(*text)) {
        mode = L"L";
        pick.at = EdState::current().variables.point(L"LASTPOINT");
    } else if (const auto point = pointOf(answer, nullptr)) {
        pick.at = *point;
    } else {
        return std::nullopt;
    }
    const ads_point at = {pick.at.x, pick.at.y, pick.at.z};
    const auto found = selectByMode(db, mode, at, nullptr, EntityFilter());
    if (found && !found->empty()) pick.entity = found->front();
    return pick;
}

int failWith(HostError error) {
    setHostError(error);
    return RTERROR;
}

int give(const Pick& pick, ads_name entity, ads_point point) {
    point[0] = pick.at.x;
    point[1] = pick.at.y;
    point[2] = pick.at.z;
    if (!pick.entity) return failWith(HostError::pickFailed);
    entity[0] = pick.entity->asOldId();
    entity[1] = 0;
    return RTNORM;
}

} // namespace
} // namespace headless

using namespace headless;

int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point) {
    const AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    const PromptRules rules = takeRules();
    if (entity == nullptr || point == nullptr) return RTERROR;
    if (db == nullptr) return RTCAN; // Callers ask again after an error, which would never end.
    if (FaultHook::fails("acedEntSel")) return failWith(HostError::none);
    const OfferedKeywords offered(rules.keywords);
    for (;;) {
        const InputAnswer answer = ask(prompt == nullptr ? L"\nSelect object: " : prompt, true);
        if (const auto cancelled = cancellation(answer)) return *cancelled;
        if (answer.isEnter()) return failWith(HostError::nullResponse);
        if (const auto keyword = keywordOf(answer, rules)) return *keyword;
        if (const auto pick = pickOf(*db, answer)) return give(*pick, entity, point);
        EdState::current().output.print(L"\nA point or Last is needed.");
    }
}
