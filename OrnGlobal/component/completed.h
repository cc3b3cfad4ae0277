// Keeps exceptions inside the library.
#pragma once

#include <exception>

#include <afxwin.h>

namespace component {

/// Runs `work` to its end; false when something was thrown on the way, as when memory runs out.
template <class Work>
[[nodiscard]] bool completed(Work work) noexcept {
    try {
        work();
        return true;
    } catch (const std::exception&) {
        return false;
    } catch (CException* failure) {
        failure->Delete();
        return false;
    }
}

} // namespace component
