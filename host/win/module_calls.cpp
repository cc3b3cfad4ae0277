#include "win/module_calls.h"

#include <algorithm>
#include <string>

#include "win/constants.h"
#include "win/last_error.h"
#include "win/native_path.h"
#include "win/state.h"

namespace {

headless::ModuleTable& modules() { return headless::WinState::current().modules; }

} // namespace

HMODULE LoadLibraryW(LPCWSTR name) {
    if (name == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    headless::ModuleTable::Failure failure;
    HMODULE const module = modules().load(headless::nativePath(name), failure);
    if (module == nullptr) {
        SetLastError(failure.refusedByEntry ? ERROR_DLL_INIT_FAILED : ERROR_MOD_NOT_FOUND);
    }
    return module;
}

BOOL FreeLibrary(HMODULE module) {
    if (modules().free(module)) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

HMODULE GetModuleHandleW(LPCWSTR name) {
    const std::string native = name == nullptr ? std::string() : headless::nativePath(name);
    HMODULE const module = modules().find(native);
    if (module == nullptr) SetLastError(ERROR_MOD_NOT_FOUND);
    return module;
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD capacity) {
    const headless::Module* found = modules().resolve(module);
    if (found == nullptr || path == nullptr || capacity == 0) {
        SetLastError(found == nullptr ? ERROR_MOD_NOT_FOUND : ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::wstring full = headless::platformPath(found->path());
    const std::size_t length = std::min<std::size_t>(full.size(), capacity - 1);
    std::copy_n(full.begin(), length, path);
    path[length] = 0;
    if (length == full.size()) return static_cast<DWORD>(length);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return capacity;
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) {
    const headless::Module* found = modules().resolve(module);
    void* const symbol = found == nullptr || name == nullptr ? nullptr : found->symbol(name);
    if (symbol == nullptr) SetLastError(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(symbol);
}

int LoadStringW(HINSTANCE module, UINT id, LPWSTR text, int capacity) {
    const headless::Module* found = modules().resolve(module);
    const auto resource = found == nullptr ? std::nullopt : found->string(id);
    if (!resource || text == nullptr || capacity < 0) {
        SetLastError(resource ? ERROR_INVALID_PARAMETER : ERROR_RESOURCE_NAME_NOT_FOUND);
        return 0;
    }
    if (capacity == 0) {
        *reinterpret_cast<LPCWSTR*>(text) = resource->data();
        return static_cast<int>(resource->size());
    }
    const std::size_t length = std::min(resource->size(), static_cast<std::size_t>(capacity) - 1);
    std::copy_n(resource->begin(), length, text);
    text[length] = 0;
    return static_cast<int>(length);
}
