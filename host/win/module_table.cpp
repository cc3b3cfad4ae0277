#include "win/module_table.h"

#include <algorithm>
#include <filesystem>

#include "win/casing.h"
#include "win/code_page.h"
#include "win/constants.h"

namespace headless {
namespace {

namespace fs = std::filesystem;

/// The file names a module of this name may have here.
std::vector<std::string> fileNames(const std::string& name) {
    std::vector<std::string> names{name};
    const fs::path path(name);
    const bool isLibrary = equalNoCase(fromUtf8(path.extension().string()), L".dll");
    if (!path.has_extension() || isLibrary) {
        const std::string stem = path.stem().string();
        names.push_back((path.parent_path() / ("lib" + stem + ".so")).string());
        names.push_back((path.parent_path() / (stem + ".so")).string());
    }
    return names;
}

/// Where a module may be, best guess first.
std::vector<std::string> candidates(const std::string& name, const fs::path& programFolder) {
    std::vector<std::string> paths;
    const bool hasFolder = name.find('/') != std::string::npos;
    for (const std::string& fileName : fileNames(name)) {
        if (!hasFolder) paths.push_back((programFolder / fileName).string());
        paths.push_back(fileName);
    }
    return paths;
}

} // namespace

ModuleTable::ModuleTable() : program_(Module::program()) {}

ModuleTable::~ModuleTable() { clear(); }

void ModuleTable::clear() {
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
        if ((*entry)->attached) (*entry)->module->callEntry(DLL_PROCESS_DETACH);
    }
    while (!entries_.empty())
        entries_.pop_back();
}

Module* ModuleTable::load(std::string_view name, Failure& failure) {
    const fs::path folder = fs::path(program_->path()).parent_path();
    for (const std::string& path : candidates(std::string(name), folder)) {
        const bool isFile = path.find('/') != std::string::npos;
        if (std::error_code ignored; isFile && !fs::exists(path, ignored)) continue;
        std::unique_ptr<Module> opened = Module::open(path, failure.text);
        if (!opened) {
            if (isFile) return nullptr; // The file is there, so its own error is the answer.
            continue;
        }
        Entry& entry = known(std::move(opened));
        return attach(entry, failure) ? entry.module.get() : nullptr;
    }
    failure.text = "no such module: " + std::string(name);
    return nullptr;
}

ModuleTable::Entry& ModuleTable::known(std::unique_ptr<Module> module) {
    for (const auto& entry : entries_) {
        if (entry->module->path() == module->path()) return *entry;
    }
    entries_.push_back(std::make_unique<Entry>());
    entries_.back()->module = std::move(module);
    return *entries_.back();
}

bool ModuleTable::attach(Entry& entry, Failure& failure) {
    if (entry.references > 0) {
        ++entry.references;
        return true;
    }
    std::set<std::string> seen;
    entry.references = 1; // Also ends a circle of dependencies.
    const bool hasNeeds = attachNeeded(entry, *entry.module, seen, failure);
    // Entries are kept in the order of attaching: what this one needs has come before it by now.
    const auto own = std::find_if(entries_.begin(), entries_.end(),
                                  [&entry](const auto& e) { return e.get() == &entry; });
    std::rotate(own, own + 1, entries_.end());
    entry.attached = hasNeeds;
    if (hasNeeds && entry.module->callEntry(DLL_PROCESS_ATTACH) != FALSE) return true;

    // A module that refuses is told to detach all the same.
    if (hasNeeds) failure = {"the entry point of " + entry.module->fileName() + " failed", true};
    release(entry);
    return false;
}

bool ModuleTable::attachNeeded(Entry& entry, const Module& of, std::set<std::string>& seen,
                               Failure& failure) {
    for (const std::string& name : of.dependencies()) {
        if (!seen.insert(name).second) continue;
        std::unique_ptr<Module> needed = Module::openLoaded(name);
        if (!needed) continue;
        if (!needed->hasEntry()) {
            if (!attachNeeded(entry, *needed, seen, failure)) return false;
            continue;
        }
        Entry& neededEntry = known(std::move(needed));
        if (!attach(neededEntry, failure)) return false;
        entry.needs.push_back(&neededEntry);
    }
    return true;
}

void ModuleTable::release(Entry& entry) {
    if (--entry.references > 0) return;
    if (entry.attached) entry.module->callEntry(DLL_PROCESS_DETACH);
    const std::vector<Entry*> needs = std::move(entry.needs);
    std::erase_if(entries_, [&entry](const auto& e) { return e.get() == &entry; });
    for (auto needed = needs.rbegin(); needed != needs.rend(); ++needed)
        release(**needed);
}

bool ModuleTable::free(const HINSTANCE__* module) {
    Entry* entry = entryOf(module);
    if (entry == nullptr || entry->references == 0) return false;
    release(*entry);
    return true;
}

Module* ModuleTable::find(std::string_view name) {
    if (name.empty()) return program_.get();
    const std::vector<std::string> names = fileNames(std::string(name));
    for (const auto& entry : entries_) {
        const std::string fileName = entry->module->fileName();
        const bool isNamed = std::any_of(names.begin(), names.end(), [&](const std::string& n) {
            return n == fileName || n == entry->module->path();
        });
        if (isNamed) return entry->module.get();
    }
    for (const std::string& fileName : names) {
        if (auto loaded = Module::openLoaded(fileName))
            return known(std::move(loaded)).module.get();
    }
    return nullptr;
}

ModuleTable::Entry* ModuleTable::entryOf(const HINSTANCE__* module) const {
    for (const auto& entry : entries_) {
        if (entry->module.get() == module) return entry.get();
    }
    return nullptr;
}

Module* ModuleTable::resolve(const HINSTANCE__* handle) {
    if (handle == nullptr || handle == program_.get()) return program_.get();
    Entry* entry = entryOf(handle);
    return entry == nullptr ? nullptr : entry->module.get();
}

} // namespace headless
