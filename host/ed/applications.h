// The modules loaded into the session as applications: their start, their messages, their end.
//
// An application is a module of the product that answers this host's interface version. It is told
// of its start and end and of every drawing that opens and closes, if it cares to listen. Modules
// that it needs are started before it and ended after the last one that needs them.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ed/app_messages.h"
#include "rx/object.h"
#include "win/types.h"

namespace headless {

class Module;

/// The interface version this host has: release 20.
inline constexpr unsigned kApiVersion = 0x140000;

struct Application {
    std::filesystem::path path;
    Module* module;
    bool locked = true; // Not to be unloaded on request.
    bool multipleDocuments = false;

    /// What the platform's calls know the application by.
    void* id() const { return module; }
};

class Applications {
public:
    /// Loads a module as an application; nothing happens when it is loaded already.
    /// @return  nothing, or one line of UTF-8 that names the file and says what is wrong.
    std::optional<std::string> load(const std::filesystem::path& path);

    /// Ends an application. False when it is not loaded, or locked unless `force` is set.
    bool unload(const std::filesystem::path& path, bool force = false);
    /// Ends all applications, the last loaded first.
    void unloadAll();

    /// Tells every application, in the order they were loaded.
    void sendToAll(AcRx::AppMsgCode message);

    /// The application of that id, or null; the pointer holds until one is loaded or unloaded.
    Application* find(const void* id);
    /// The same by path, or by file name alone.
    Application* find(const std::filesystem::path& path);

    const std::vector<Application>& all() const { return applications_; }

private:
    void remove(const Module* module);

    std::vector<Application> applications_;
};

} // namespace headless

/// Loads and unloads modules and knows what they allow. Calls about an application that is not
/// loaded answer false.
class AcRxDynamicLinker : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker);

    explicit AcRxDynamicLinker(headless::Applications& applications)
        : applications_(applications) {}

    /// @param print  says on the command line what went wrong.
    bool loadModule(const ACHAR* fileName, bool print, bool asCommand = false);
    /// Refused for a locked application.
    bool unloadModule(const ACHAR* fileName, bool asCommand = false);

    bool lockApplication(void* id) const;
    bool unlockApplication(void* id) const;
    bool isApplicationLocked(const ACHAR* name) const;
    bool isApplicationLocked(void* id) const;

    bool registerAppMDIAware(void* id) const;
    bool registerAppNotMDIAware(void* id) const;
    bool isAppMDIAware(const ACHAR* name) const;

private:
    headless::Application* find(const ACHAR* name) const;

    headless::Applications& applications_;
};

AcRxDynamicLinker* acrxDynamicLinkerPtr();
#define acrxDynamicLinker acrxDynamicLinkerPtr()

bool acrxLoadModule(const ACHAR* fileName, bool print, bool asCommand = false);
bool acrxUnloadModule(const ACHAR* fileName, bool asCommand = false);
bool acrxUnlockApplication(void* id);
bool acrxRegisterAppMDIAware(void* id);
