// Objects whose members programs find at run time, by number or by name.
#pragma once

#include "win/unknown.h"
#include "win/variant.h"

typedef LONG DISPID;
typedef DWORD LCID;

constexpr DISPID DISPID_VALUE = 0;
constexpr DISPID DISPID_UNKNOWN = -1;
constexpr DISPID DISPID_PROPERTYPUT = -3;
constexpr DISPID DISPID_NEWENUM = -4;

constexpr WORD DISPATCH_METHOD = 1;
constexpr WORD DISPATCH_PROPERTYGET = 2;
constexpr WORD DISPATCH_PROPERTYPUT = 4;
constexpr WORD DISPATCH_PROPERTYPUTREF = 8;

constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x0800;
constexpr LCID LOCALE_USER_DEFAULT = 0x0400;

/// Arguments stand in reverse order; a property's new value is the first.
struct DISPPARAMS {
    VARIANTARG* rgvarg;
    DISPID* rgdispidNamedArgs; ///< Of the first `cNamedArgs` arguments.
    UINT cArgs;
    UINT cNamedArgs;
};

/// What a member says went wrong; the texts belong to whoever asked.
struct EXCEPINFO {
    WORD wCode;
    WORD wReserved;
    BSTR bstrSource;
    BSTR bstrDescription;
    BSTR bstrHelpFile;
    DWORD dwHelpContext;
    PVOID pvReserved;
    HRESULT (*pfnDeferredFillIn)(EXCEPINFO*);
    SCODE scode;
};

struct ITypeInfo;

struct IDispatch : IUnknown {
    virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
    virtual HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
    virtual HRESULT GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                  DISPID* ids) = 0;
    virtual HRESULT Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                           DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                           UINT* badArgument) = 0;

protected:
    ~IDispatch() = default;
};
typedef IDispatch* LPDISPATCH;

namespace headless {

/// The base of the host's own objects: counts references, and how many are out in the process.
/// A fresh object has none; it deletes itself when the last one is given back.
class AutomationObject : public IDispatch {
public:
    AutomationObject() = default;
    virtual ~AutomationObject() = default;
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;

    HRESULT QueryInterface(REFIID iid, void** object) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetTypeInfoCount(UINT* count) override;
    HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;

private:
    ULONG references_ = 0;
};

/// References to objects of the host that are held in this process.
[[nodiscard]] std::size_t liveAutomationReferences();

} // namespace headless
