// The functions of programs that see every window message before the host does.
#pragma once

#include <cstddef>
#include <vector>

#include "win/types.h"

/// Returns TRUE to keep the message from the host and from the filters after it.
typedef BOOL (*AcedFilterWinMsgFn)(MSG* message);

/// Adds a filter after those that are there. One added twice is called twice and has to be removed
/// twice. FALSE for null.
BOOL acedRegisterFilterWinMsg(AcedFilterWinMsgFn filter);
/// Removes a filter, the newest where it was added more than once. FALSE when it is none.
BOOL acedRemoveFilterWinMsg(AcedFilterWinMsgFn filter);

namespace headless {

class MessageFilters {
public:
    void add(AcedFilterWinMsgFn filter) { filters_.push_back(filter); }
    bool remove(AcedFilterWinMsgFn filter);
    std::size_t count() const { return filters_.size(); }

    /// Shows the message to the filters in the order they were added; they may add and remove
    /// filters meanwhile. False when one of them keeps it from the host.
    bool pass(MSG message);

private:
    std::vector<AcedFilterWinMsgFn> filters_;
};

} // namespace headless
