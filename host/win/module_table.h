// The modules a session has loaded, and their order of attaching and detaching.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "win/module.h"

namespace headless {

/// What a session knows of the process's modules.
///
/// Loading a module calls DllMain of the modules it depends on, then its own; letting go of the
/// last reference calls them in the opposite order. A module that is linked into the process
/// counts as not attached until the session loads something that needs it. The table detaches what
/// is left when it goes.
class ModuleTable {
public:
    ModuleTable();
    ~ModuleTable();
    ModuleTable(const ModuleTable&) = delete;
    ModuleTable& operator=(const ModuleTable&) = delete;

    /// Why a module could not be loaded.
    struct Failure {
        std::string text;            ///< One line for people.
        bool refusedByEntry = false; ///< The module's own entry point, or one it needs, said no.
    };

    /// Loads a module and adds a reference.
    ///
    /// @param name     a path or a bare name, which is sought beside the program, then where the
    ///                 system looks. "X.dll" and "X" also find libX.so and X.so.
    /// @param failure  filled when the result is null.
    Module* load(std::string_view name, Failure& failure);

    /// Detaches and lets go of every module.
    void clear();

    /// Lets go of a reference; false for a module that has none.
    bool free(const HINSTANCE__* module);

    /// The module of a name, with or without folder and ending; an empty name is the program. Null
    /// when it is not in the process. No reference is added.
    Module* find(std::string_view name);

    /// The module behind a handle; the program for null, null for a handle that is none.
    [[nodiscard]] Module* resolve(const HINSTANCE__* handle);

private:
    struct Entry {
        std::unique_ptr<Module> module;
        int references = 0;    ///< 0: only known by name.
        bool attached = false; ///< Its entry point has been told so.
        std::vector<Entry*> needs;
    };

    Entry* entryOf(const HINSTANCE__* module) const;
    Entry& known(std::unique_ptr<Module> module);
    bool attach(Entry& entry, Failure& failure);
    bool attachNeeded(Entry& entry, const Module& of, std::set<std::string>& seen,
                      Failure& failure);
    void release(Entry& entry);

    std::vector<std::unique_ptr<Entry>> entries_; // In the order of attaching.
    std::unique_ptr<Module> program_;
};

} // namespace headless
