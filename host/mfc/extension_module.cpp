#include "mfc/extension_module.h"

#include <algorithm>
#include <filesystem>

#include "mfc/state.h"
#include "win/code_page.h"
#include "win/module_calls.h"
#include "win/state.h"

using headless::MfcState;

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module) {
    if (record.bInitialized != FALSE) return TRUE;
    MfcState& state = MfcState::current();
    if (state.initialisationsBeforeFailure == 0) return FALSE;
    if (state.initialisationsBeforeFailure > 0) --state.initialisationsBeforeFailure;
    record = {TRUE, module, module};
    state.extensionModules.push_back(&record);
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) {
    if (record.bInitialized == FALSE) return;
    MfcState& state = MfcState::current();
    const std::vector<CDynLinkLibrary*> libraries = state.libraries;
    for (const CDynLinkLibrary* library : libraries) {
        if (all != FALSE || library->m_hModule == record.hModule) delete library;
    }
    std::erase(state.extensionModules, &record);
    // The next session attaches the module under another handle.
    record = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system)
    : m_hModule(record.hModule), m_hResource(record.hResource), m_bSystem(system) {
    MfcState::current().libraries.push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() { std::erase(MfcState::current().libraries, this); }

AFX_MODULE_STATE* AfxGetModuleState() { return &MfcState::current().moduleState; }
AFX_MODULE_STATE* AfxGetStaticModuleState() { return AfxGetModuleState(); }

HINSTANCE AfxGetInstanceHandle() {
    HINSTANCE const set = AfxGetModuleState()->m_hCurrentInstanceHandle;
    return set != nullptr ? set : GetModuleHandleW(nullptr);
}

HINSTANCE AfxGetResourceHandle() {
    HINSTANCE const set = AfxGetModuleState()->m_hCurrentResourceHandle;
    return set != nullptr ? set : GetModuleHandleW(nullptr);
}

void AfxSetResourceHandle(HINSTANCE module) {
    AfxGetModuleState()->m_hCurrentResourceHandle = module;
}

LPCTSTR AfxGetAppName() {
    std::wstring& name = MfcState::current().applicationName;
    if (name.empty()) {
        const headless::Module* program = headless::WinState::current().modules.resolve(nullptr);
        name = headless::fromUtf8(std::filesystem::path(program->path()).stem().string());
    }
    return name.c_str();
}
