#include "win/variant.h"

#include "win/dispatch.h"

namespace {

bool isType(VARTYPE type) { return type <= VT_UNKNOWN && type != VT_VARIANT && type != 6; }

IUnknown* unknownOf(const VARIANT& variant) {
    if (variant.vt == VT_DISPATCH) return variant.pdispVal;
    return variant.vt == VT_UNKNOWN ? variant.punkVal : nullptr;
}

} // namespace

void VariantInit(VARIANT* variant) { *variant = VARIANT{}; }

HRESULT VariantClear(VARIANT* variant) {
    if (!isType(variant->vt)) return DISP_E_BADVARTYPE;
    if (variant->vt == VT_BSTR) SysFreeString(variant->bstrVal);
    if (IUnknown* const object = unknownOf(*variant)) object->Release();
    VariantInit(variant);
    return S_OK;
}

HRESULT VariantCopy(VARIANT* target, const VARIANT* source) {
    if (target == source) return S_OK;
    if (!isType(source->vt)) return DISP_E_BADVARTYPE;
    VARIANT copy = *source;
    if (IUnknown* const object = unknownOf(copy)) object->AddRef();
    if (copy.vt == VT_BSTR && copy.bstrVal != nullptr) {
        copy.bstrVal = SysAllocStringByteLen(nullptr, SysStringByteLen(source->bstrVal));
        if (copy.bstrVal == nullptr) return E_OUTOFMEMORY;
        SysReAllocStringLen(&copy.bstrVal, source->bstrVal, SysStringLen(source->bstrVal));
    }
    const HRESULT cleared = VariantClear(target);
    if (FAILED(cleared)) {
        VariantClear(&copy);
        return cleared;
    }
    *target = copy;
    return S_OK;
}
