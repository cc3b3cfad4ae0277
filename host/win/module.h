// One loaded module: a shared object with its entry point, exports and string resources.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "win/string_table.h"
#include "win/types.h"

struct link_map;

namespace headless {

/// A module of the process. Its address is the platform's HINSTANCE.
class Module : public HINSTANCE__ {
public:
    /// Loads a file, or finds it when it is already in the process. Null when that fails; `error`
    /// then says why. The module's entry point is not called.
    static std::unique_ptr<Module> open(const std::string& path, std::string& error);
    /// Finds a file that is already in the process; null otherwise.
    static std::unique_ptr<Module> openLoaded(const std::string& name);
    /// The program itself.
    static std::unique_ptr<Module> program();

    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// The file name without its folder.
    [[nodiscard]] std::string fileName() const;

    /// An export of this very module, not of one it depends on; null when it has none.
    [[nodiscard]] void* symbol(const char* name) const;

    /// Names of the shared objects it depends on directly.
    [[nodiscard]] std::vector<std::string> dependencies() const;

    /// Calls DllMain; TRUE when the module has none.
    BOOL callEntry(DWORD reason);
    [[nodiscard]] bool hasEntry() const { return symbol("DllMain") != nullptr; }

    /// A string resource. The script stands beside the module: X.rc for X.arx and libX.so.
    [[nodiscard]] std::optional<std::wstring_view> string(UINT id) const;

private:
    Module(void* handle, std::string path);

    void* handle_;
    link_map* object_ = nullptr;
    std::string path_;
    mutable std::optional<StringTable> strings_; // Read when first asked for.
};

} // namespace headless
