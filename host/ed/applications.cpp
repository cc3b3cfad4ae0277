#include "ed/applications.h"

#include <algorithm>
#include <cstdio>

#include "ed/state.h"
#include "win/code_page.h"
#include "win/module_table.h"
#include "win/native_path.h"
#include "win/state.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject)

namespace headless {
namespace {

namespace fs = std::filesystem;

ModuleTable& moduleTable() { return WinState::current().modules; }

fs::path normalized(const fs::path& path) {
    std::error_code failed;
    fs::path result = fs::weakly_canonical(path, failed);
    return failed ? path : result;
}

std::string hexadecimal(unsigned number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", number);
    return text;
}

/// What is wrong with a module that shall be an application of this host; nothing when all is well.
std::optional<std::string> interfaceFault(const Module& module) {
    using GetApiVersion = unsigned (*)();
    const auto query = reinterpret_cast<GetApiVersion>(module.symbol("acrxGetApiVersion"));
    if (query == nullptr) return "no module for this host, it has no acrxGetApiVersion";
    const unsigned version = query();
    if (version == kApiVersion) return std::nullopt;
    return "built for API version " + hexadecimal(version) + ", this host has " +
           hexadecimal(kApiVersion);
}

/// Passes the message to acrxEntryPoint; a module without one is content with everything.
AcRx::AppRetCode send(const Module& module, AcRx::AppMsgCode message) {
    using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);
    const auto entry = reinterpret_cast<EntryPoint>(module.symbol("acrxEntryPoint"));
    return entry == nullptr ? AcRx::kRetOK : entry(message, const_cast<Module*>(&module));
}

bool hasDrawing() { return EdState::current().documents.current() != nullptr; }

} // namespace

std::optional<std::string> Applications::load(const fs::path& path) {
    const fs::path file = normalized(path);
    if (find(file) != nullptr) return std::nullopt;
    const std::string name = file.filename().string();
    if (std::error_code failed; !fs::is_regular_file(file, failed)) {
        return file.string() + ": no such file";
    }
    ModuleTable::Failure failure;
    Module* module = moduleTable().load(file.string(), failure);
    if (module == nullptr) return name + ": " + failure.text;
    if (const auto fault = interfaceFault(*module)) {
        moduleTable().free(module);
        return name + ": " + *fault;
    }
    // Entered before it is told, as it says at once what it allows.
    applications_.push_back({file, module});
    if (send(*module, AcRx::kInitAppMsg) != AcRx::kRetOK) {
        remove(module);
        return name + ": it refused to start";
    }
    if (hasDrawing()) send(*module, AcRx::kLoadDwgMsg);
    return std::nullopt;
}

void Applications::remove(const Module* module) {
    std::erase_if(applications_, [&](const Application& a) { return a.module == module; });
    moduleTable().free(module);
}

bool Applications::unload(const fs::path& path, bool force) {
    const Application* found = find(path);
    if (found == nullptr || (found->locked && !force)) return false;
    Module* module = found->module;
    if (hasDrawing()) send(*module, AcRx::kUnloadDwgMsg);
    send(*module, AcRx::kUnloadAppMsg);
    remove(module);
    return true;
}

void Applications::unloadAll() {
    while (!applications_.empty()) {
        unload(applications_.back().path, true);
    }
}

void Applications::sendToAll(AcRx::AppMsgCode message) {
    // Copied: an application may load another one when it is told.
    const std::vector<Application> told = applications_;
    for (const Application& application : told) {
        send(*application.module, message);
    }
}

Application* Applications::find(const void* id) {
    const auto at =
        std::ranges::find_if(applications_, [&](const Application& a) { return a.id() == id; });
    return at == applications_.end() ? nullptr : &*at;
}

Application* Applications::find(const fs::path& path) {
    const bool nameOnly = !path.has_parent_path();
    const fs::path file = normalized(path);
    const auto at = std::ranges::find_if(applications_, [&](const Application& a) {
        return a.path == file || (nameOnly && a.path.filename() == path);
    });
    return at == applications_.end() ? nullptr : &*at;
}

} // namespace headless

using headless::Application;

bool AcRxDynamicLinker::loadModule(const ACHAR* fileName, bool print, bool /*asCommand*/) {
    if (fileName == nullptr) return false;
    const auto error = applications_.load(headless::nativePath(fileName));
    if (error && print) acutPrintf(L"\n%s", headless::fromUtf8(*error).c_str());
    return !error;
}

bool AcRxDynamicLinker::unloadModule(const ACHAR* fileName, bool /*asCommand*/) {
    return fileName != nullptr && applications_.unload(headless::nativePath(fileName));
}

Application* AcRxDynamicLinker::find(const ACHAR* name) const {
    if (name == nullptr) return nullptr;
    return applications_.find(std::filesystem::path(headless::nativePath(name)));
}

namespace {

bool setFlag(Application* application, bool Application::*flag, bool value) {
    if (application == nullptr) return false;
    application->*flag = value;
    return true;
}

bool isFlagSet(const Application* application, bool Application::*flag) {
    return application != nullptr && application->*flag;
}

} // namespace

bool AcRxDynamicLinker::lockApplication(void* id) const {
    return setFlag(applications_.find(id), &Application::locked, true);
}

bool AcRxDynamicLinker::unlockApplication(void* id) const {
    return setFlag(applications_.find(id), &Application::locked, false);
}

bool AcRxDynamicLinker::isApplicationLocked(const ACHAR* name) const {
    return isFlagSet(find(name), &Application::locked);
}

bool AcRxDynamicLinker::isApplicationLocked(void* id) const {
    return isFlagSet(applications_.find(id), &Application::locked);
}

bool AcRxDynamicLinker::registerAppMDIAware(void* id) const {
    return setFlag(applications_.find(id), &Application::multipleDocuments, true);
}

bool AcRxDynamicLinker::registerAppNotMDIAware(void* id) const {
    return setFlag(applications_.find(id), &Application::multipleDocuments, false);
}

bool AcRxDynamicLinker::isAppMDIAware(const ACHAR* name) const {
    return isFlagSet(find(name), &Application::multipleDocuments);
}

AcRxDynamicLinker* acrxDynamicLinkerPtr() { return &headless::EdState::current().dynamicLinker; }

bool acrxLoadModule(const ACHAR* fileName, bool print, bool asCommand) {
    return acrxDynamicLinker->loadModule(fileName, print, asCommand);
}

bool acrxUnloadModule(const ACHAR* fileName, bool asCommand) {
    return acrxDynamicLinker->unloadModule(fileName, asCommand);
}

bool acrxUnlockApplication(void* id) { return acrxDynamicLinker->unlockApplication(id); }

bool acrxRegisterAppMDIAware(void* id) { return acrxDynamicLinker->registerAppMDIAware(id); }
