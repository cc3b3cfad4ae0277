#include "ed/state.h"

#include "ed/dialog_library.h"

namespace headless {
namespace {

EdState* newest = nullptr;

} // namespace

EdState::EdState()
    : SessionState(newest), dynamicLinker(applications),
      documents([this](AcRx::AppMsgCode message) { applications.sendToAll(message); }),
      documentManager(documents) {}

EdState::~EdState() {
    documents.closeAll();
    applications.unloadAll();
}

EdState& EdState::current() {
    // Never destroyed: modules may print until the very end of the process.
    if (newest == nullptr) new EdState; // NOLINT(cppcoreguidelines-owning-memory)
    return *newest;
}

} // namespace headless

void InitAcUiDLL() { ++headless::EdState::current().dialogLibraryStarts; }
