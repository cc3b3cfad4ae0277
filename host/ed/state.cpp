#include "ed/state.h"

#include "ed/dialog_library.h"
#include "ed/save_commands.h"
#include "ed/undo_commands.h"
#include "ed/zoom.h"

namespace headless {
namespace {

EdState* newest = nullptr;

void quit() { EdState::current().runner.quit(); }

} // namespace

EdState::EdState()
    : SessionState(newest), dynamicLinker(applications),
      documents([this](AcRx::AppMsgCode message) { applications.sendToAll(message); }),
      documentManager(documents) {
    for (const wchar_t* name : {L"QUIT", L"EXIT"}) {
        commands.addCommand(L"CORE", name, name, ACRX_CMD_SESSION, quit);
    }
    registerZoom(commands);
    addUndoCommands(commands);
    registerSaving(commands);
}

EdState::~EdState() {
    applications.sendToAll(AcRx::kPreQuitMsg);
    documents.closeAll();
    applications.sendToAll(AcRx::kQuitMsg);
    applications.unloadAll();
}

EdState& EdState::current() {
    // Never destroyed: modules may print until the very end of the process.
    if (newest == nullptr) new EdState; // NOLINT(cppcoreguidelines-owning-memory)
    return *newest;
}

} // namespace headless

void InitAcUiDLL() { ++headless::EdState::current().dialogLibraryStarts; }
