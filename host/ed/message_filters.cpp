#include "ed/message_filters.h"

#include <algorithm>

#include "db/fault_hook.h"
#include "ed/state.h"

namespace headless {

bool MessageFilters::remove(AcedFilterWinMsgFn filter) {
    const auto newest = std::find(filters_.rbegin(), filters_.rend(), filter);
    if (newest == filters_.rend()) return false;
    filters_.erase(std::next(newest).base());
    return true;
}

bool MessageFilters::pass(MSG message) {
    const std::vector<AcedFilterWinMsgFn> now = filters_;
    return std::ranges::none_of(now, [&](AcedFilterWinMsgFn filter) {
        const bool stillThere = std::ranges::find(filters_, filter) != filters_.end();
        return stillThere && filter(&message) != FALSE;
    });
}

} // namespace headless

BOOL acedRegisterFilterWinMsg(AcedFilterWinMsgFn filter) {
    if (filter == nullptr) return FALSE;
    if (headless::FaultHook::fails("acedRegisterFilterWinMsg")) return FALSE;
    headless::EdState::current().messageFilters.add(filter);
    return TRUE;
}

BOOL acedRemoveFilterWinMsg(AcedFilterWinMsgFn filter) {
    return headless::EdState::current().messageFilters.remove(filter) ? TRUE : FALSE;
}
