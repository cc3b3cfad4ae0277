#include "mfc/resource.h"

#include <ranges>

#include "mfc/state.h"
#include "win/state.h"

namespace headless {

std::optional<std::wstring> resourceString(HINSTANCE module, UINT id) {
    const Module* found = WinState::current().modules.resolve(module);
    const auto text = found == nullptr ? std::nullopt : found->string(id);
    if (!text) return std::nullopt;
    return std::wstring(*text);
}

std::optional<std::wstring> findResourceString(UINT id) {
    if (auto text = resourceString(AfxGetResourceHandle(), id)) return text;
    for (const CDynLinkLibrary* library : std::views::reverse(MfcState::current().libraries)) {
        if (auto text = resourceString(library->m_hResource, id)) return text;
    }
    return std::nullopt;
}

} // namespace headless
