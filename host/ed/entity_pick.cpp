#include "ed/entity_pick.h"

#include "ed/entity_filter.h"
#include "ed/selection_modes.h"
#include "ed/state.h"

namespace headless {
namespace {

/// Nothing for an answer that is no pick.
std::optional<EntityPick> pickOf(const AcDbDatabase& db, const InputAnswer& answer) {
    const auto* const text = std::get_if<std::wstring>(&answer.value);
    if (text != nullptr && Keywords(L"Last").match(*text))
        return pickEntity(db, EdState::current().variables.point(L"LASTPOINT"), L"L");
    const auto point = pointOf(answer, nullptr);
    return point ? std::optional(pickEntity(db, *point)) : std::nullopt;
}

} // namespace

int failWith(HostError error) {
    setHostError(error);
    return RTERROR;
}

EntityPick pickEntity(const AcDbDatabase& db, const AcGePoint3d& at, std::wstring_view mode) {
    const ads_point place = {at.x, at.y, at.z};
    const auto found = selectByMode(db, mode, place, nullptr, EntityFilter());
    if (!found || found->empty()) return {failWith(HostError::pickFailed), at, {}};
    return {RTNORM, at, found->front()};
}

EntityPick askEntity(const AcDbDatabase& db, const ACHAR* prompt, const PromptRules& rules) {
    const OfferedKeywords offered(rules.keywords);
    for (;;) {
        const InputAnswer answer = ask(prompt == nullptr ? L"\nSelect object: " : prompt, true);
        if (const auto cancelled = cancellation(answer)) return {*cancelled, {}, {}};
        if (answer.isEnter()) return {failWith(HostError::nullResponse), {}, {}};
        if (const auto keyword = keywordOf(answer, rules)) return {*keyword, {}, {}};
        if (auto pick = pickOf(db, answer)) return *pick;
        EdState::current().output.print(L"\nA point or Last is needed.");
    }
}

void tell(const EntityPick& pick, ads_name entity, ads_point point) {
    for (unsigned int axis = 0; pick.at && axis < 3; ++axis)
        point[axis] = (*pick.at)[axis];
    if (pick.result != RTNORM) return;
    entity[0] = pick.entity.asOldId();
    entity[1] = 0;
}

} // namespace headless
