#include "db/fault_hook.h"

namespace headless {
namespace {

FaultHook::Function& hook() {
    static FaultHook::Function function;
    return function;
}

} // namespace

bool FaultHook::installed = false;

void FaultHook::set(Function function) {
    hook() = std::move(function);
    installed = static_cast<bool>(hook());
}

bool FaultHook::ask(const char* call) { return hook()(call); }

} // namespace headless
