#include "win/module.h"

#include <dlfcn.h>
#include <link.h>

#include <filesystem>

namespace headless {
namespace {

std::string programPath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string resourceScript(const std::filesystem::path& module) {
    constexpr std::string_view kPrefix = "lib";
    std::string stem = module.stem().string();
    if (module.extension() == ".so" && stem.starts_with(kPrefix)) stem.erase(0, kPrefix.size());
    return (module.parent_path() / (stem + ".rc")).string();
}

} // namespace

std::unique_ptr<Module> Module::open(const std::string& path, std::string& error) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        error = dlerror();
        return nullptr;
    }
    return std::unique_ptr<Module>(new Module(handle, {}));
}

std::unique_ptr<Module> Module::openLoaded(const std::string& name) {
    void* handle = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (handle == nullptr) return nullptr;
    return std::unique_ptr<Module>(new Module(handle, {}));
}

std::unique_ptr<Module> Module::program() {
    void* handle = dlopen(nullptr, RTLD_NOW);
    return std::unique_ptr<Module>(new Module(handle, programPath()));
}

Module::Module(void* handle, std::string path) : handle_(handle), path_(std::move(path)) {
    dlinfo(handle_, RTLD_DI_LINKMAP, &object_);
    if (path_.empty() && object_ != nullptr) {
        std::error_code error;
        path_ = std::filesystem::absolute(object_->l_name, error).string();
    }
}

Module::~Module() { dlclose(handle_); }

std::string Module::fileName() const { return std::filesystem::path(path_).filename().string(); }

void* Module::symbol(const char* name) const {
    void* found = dlsym(handle_, name);
    if (found == nullptr) return nullptr;
    // The dynamic linker also answers with what dependencies export.
    Dl_info info;
    void* owner = nullptr;
    if (dladdr1(found, &info, &owner, RTLD_DL_LINKMAP) == 0) return nullptr;
    return owner == object_ ? found : nullptr;
}

std::vector<std::string> Module::dependencies() const {
    std::vector<std::string> names;
    if (object_ == nullptr) return names;
    const char* strings = nullptr;
    for (const ElfW(Dyn)* entry = object_->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag != DT_STRTAB) continue;
        // Some architectures leave the address relative to the object.
        const ElfW(Addr) address = entry->d_un.d_ptr;
        const ElfW(Addr) base = address < object_->l_addr ? object_->l_addr : 0;
        strings = reinterpret_cast<const char*>(base + address);
    }
    for (const ElfW(Dyn)* entry = object_->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_NEEDED && strings != nullptr) {
            names.emplace_back(strings + entry->d_un.d_val);
        }
    }
    return names;
}

BOOL Module::callEntry(DWORD reason) {
    using Entry = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);
    const auto entry = reinterpret_cast<Entry>(symbol("DllMain"));
    return entry == nullptr ? TRUE : entry(this, reason, nullptr);
}

std::optional<std::wstring_view> Module::string(UINT id) const {
    if (!strings_) strings_ = StringTable::read(resourceScript(path_));
    return strings_->find(id);
}

} // namespace headless
