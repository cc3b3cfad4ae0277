// Automation's ground: identifiers of interfaces, and objects that count their references.
#pragma once

#include "win/constants.h"
#include "win/types.h"

struct GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];

    friend constexpr bool operator==(const GUID&, const GUID&) = default;
};
typedef GUID IID;
typedef GUID CLSID;
typedef const GUID& REFGUID;
typedef const IID& REFIID;
typedef const CLSID& REFCLSID;

inline constexpr IID IID_NULL = {};
inline constexpr CLSID CLSID_NULL = {};
inline constexpr IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IDispatch = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

constexpr BOOL IsEqualGUID(REFGUID a, REFGUID b) { return a == b; }
constexpr BOOL IsEqualIID(REFIID a, REFIID b) { return a == b; }

/// The interface of every object. Who gets a pointer from a call owns a reference and gives it back
/// with Release(), which returns how many are left.
struct IUnknown {
    virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};
typedef IUnknown* LPUNKNOWN;
