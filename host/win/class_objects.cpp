#include "win/class_objects.h"

#include <algorithm>

#include "win/casing.h"
#include "win/state.h"

HRESULT CoInitialize(LPVOID /*reserved*/) { return S_OK; }

void CoUninitialize() {}

HRESULT CLSIDFromProgID(LPCOLESTR programId, CLSID* classId) {
    const auto* server = headless::WinState::current().automationServers.find(programId);
    *classId = server == nullptr ? CLSID_NULL : server->classId;
    return server == nullptr ? CO_E_CLASSSTRING : S_OK;
}

HRESULT CoCreateInstance(REFCLSID classId, LPUNKNOWN /*outer*/, DWORD /*context*/, REFIID iid,
                         LPVOID* object) {
    *object = nullptr;
    const auto* server = headless::WinState::current().automationServers.find(classId);
    if (server == nullptr) return REGDB_E_CLASSNOTREG;
    IDispatch* made = server->create();
    if (made == nullptr) return E_FAIL;
    const HRESULT answered = made->QueryInterface(iid, object);
    made->Release();
    return answered;
}

namespace headless {

void AutomationServers::add(AutomationServer server) {
    remove(server.programId);
    servers_.push_back(std::move(server));
}

void AutomationServers::remove(std::wstring_view programId) {
    std::erase_if(servers_, [&](const AutomationServer& server) {
        return equalNoCase(server.programId, programId);
    });
}

const AutomationServer* AutomationServers::find(std::wstring_view programId) const {
    const auto found = std::ranges::find_if(servers_, [&](const AutomationServer& server) {
        return equalNoCase(server.programId, programId);
    });
    return found == servers_.end() ? nullptr : &*found;
}

const AutomationServer* AutomationServers::find(REFCLSID classId) const {
    const auto found = std::ranges::find(servers_, classId, &AutomationServer::classId);
    return found == servers_.end() ? nullptr : &*found;
}

} // namespace headless
