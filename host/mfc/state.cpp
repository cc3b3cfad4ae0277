#include "mfc/state.h"

#include <utility>

namespace headless {
namespace {

MfcState*& newestState() {
    static MfcState* newest = nullptr;
    return newest;
}

} // namespace

MfcState::MfcState() : SessionState(newestState()) {}
MfcState::MfcState(ProcessWide /*processWide*/) {}

MfcState::~MfcState() {
    // A library takes itself out of the current session's chain, which need not be this one.
    for (const CDynLinkLibrary* library : std::exchange(libraries, {}))
        delete library;
}

MfcState& MfcState::current() {
    static MfcState processWide{ProcessWide{}};
    MfcState* newest = newestState();
    return newest != nullptr ? *newest : processWide;
}

} // namespace headless
