#include "win/dispatch.h"

#include <atomic>

namespace headless {
namespace {

std::atomic<std::size_t> liveReferences = 0;

} // namespace

HRESULT AutomationObject::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IDispatch) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG AutomationObject::AddRef() {
    ++liveReferences;
    return ++references_;
}

ULONG AutomationObject::Release() {
    --liveReferences;
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT AutomationObject::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) {
    if (info != nullptr) *info = nullptr;
    return E_NOTIMPL;
}

std::size_t liveAutomationReferences() { return liveReferences; }

} // namespace headless
