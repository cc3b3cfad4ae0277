// Servers of automation objects, found by their program ids.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "win/dispatch.h"

constexpr DWORD CLSCTX_INPROC_SERVER = 0x1;
constexpr DWORD CLSCTX_LOCAL_SERVER = 0x4;
constexpr DWORD CLSCTX_SERVER = 0x15;
constexpr DWORD CLSCTX_ALL = 0x17;

constexpr HRESULT CO_E_CLASSSTRING = static_cast<HRESULT>(0x800401F3U);
constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154U);
constexpr HRESULT RPC_E_DISCONNECTED = static_cast<HRESULT>(0x80010108U);

/// Initialising is counted on the platform; here it always succeeds.
HRESULT CoInitialize(LPVOID reserved);
void CoUninitialize();
/// The class behind "Excel.Application"; CO_E_CLASSSTRING for a name nobody registered.
HRESULT CLSIDFromProgID(LPCOLESTR programId, CLSID* classId);
/// A new object of the class with one reference; REGDB_E_CLASSNOTREG for a class nobody registered.
HRESULT CoCreateInstance(REFCLSID classId, LPUNKNOWN outer, DWORD context, REFIID iid,
                         LPVOID* object);

namespace headless {

/// A class of objects that a session serves.
struct AutomationServer {
    std::wstring programId;
    CLSID classId;
    std::function<IDispatch*()> create; ///< With one reference; null when it cannot start.
};

/// The servers of a session; one that was never registered is an application not installed.
class AutomationServers {
public:
    /// Replaces a server of the same program id.
    void add(AutomationServer server);
    void remove(std::wstring_view programId);
    const AutomationServer* find(std::wstring_view programId) const;
    const AutomationServer* find(REFCLSID classId) const;

private:
    std::vector<AutomationServer> servers_;
};

} // namespace headless
