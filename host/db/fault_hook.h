// Makes calls of the platform fail on purpose, so that tests see what callers do then.
#pragma once

#include <functional>

namespace headless {

/// Asked at each call that can fail, by the call's name, while one is installed: true makes the
/// call fail as it may, with a status that its documentation names, before it has any effect.
class FaultHook {
public:
    using Function = std::function<bool(const char* call)>;

    /// An empty function takes the hook away.
    static void set(Function function);

    [[nodiscard]] static bool fails(const char* call) {
        if (!installed) [[likely]]
            return false;
        return ask(call);
    }

private:
    static bool ask(const char* call);

    static bool installed;
};

} // namespace headless
