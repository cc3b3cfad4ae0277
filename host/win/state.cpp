#include "win/state.h"

namespace headless {
namespace {

WinState*& newestState() {
    static WinState* newest = nullptr;
    return newest;
}

} // namespace

WinState::WinState() : SessionState(newestState()) {}
WinState::WinState(ProcessWide /*processWide*/) {}
WinState::~WinState() = default;

WinState& WinState::current() {
    static WinState processWide{ProcessWide{}};
    WinState* newest = newestState();
    return newest != nullptr ? *newest : processWide;
}

} // namespace headless
