#include "win/variant.h"

#include "win/dispatch.h"
#include "win/safe_array.h"

namespace {

bool isValueType(VARTYPE type) { return type <= VT_DECIMAL || (type >= VT_I1 && type <= VT_UINT); }

bool isKnown(VARTYPE type) {
    const auto base = static_cast<VARTYPE>(type & VT_TYPEMASK);
    const bool modified = (type & (VT_ARRAY | VT_BYREF)) != 0;
    return isValueType(base) && (modified || base != VT_VARIANT);
}

/// Copies, counts or clones what the just copied bits refer to.
HRESULT own(VARIANT& copy) {
    switch (copy.vt) {
    case VT_BSTR:
        if (copy.bstrVal == nullptr) return S_OK;
        copy.bstrVal = SysAllocStringByteLen(reinterpret_cast<LPCSTR>(copy.bstrVal),
                                             SysStringByteLen(copy.bstrVal));
        return copy.bstrVal == nullptr ? E_OUTOFMEMORY : S_OK;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        if (copy.punkVal != nullptr) copy.punkVal->AddRef();
        return S_OK;
    default:
        break;
    }
    if ((copy.vt & VT_ARRAY) == 0 || (copy.vt & VT_BYREF) != 0) return S_OK;
    SAFEARRAY* const source = copy.parray;
    return SafeArrayCopy(source, &copy.parray);
}

/// The value that a VT_BYREF variant refers to, still owned by its owner.
HRESULT readReference(const VARIANT& reference, VARIANT& value) {
    if (reference.byref == nullptr) return E_INVALIDARG;
    if (reference.vt == (VT_BYREF | VT_VARIANT)) {
        value = *reference.pvarVal;
        return (value.vt & VT_BYREF) != 0 ? E_INVALIDARG : S_OK;
    }
    value.vt = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    if ((value.vt & VT_ARRAY) != 0) {
        value.parray = *reference.pparray;
        return S_OK;
    }
    switch (value.vt) {
    case VT_I1:
    case VT_UI1:
        value.bVal = *reference.pbVal;
        break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        value.iVal = *reference.piVal;
        break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
    case VT_R4:
        value.lVal = *reference.plVal;
        break;
    default:
        value.llVal = *reference.pllVal;
        break;
    }
    return S_OK;
}

} // namespace

void VariantInit(VARIANTARG* variant) { *variant = VARIANT{}; }

HRESULT VariantClear(VARIANTARG* variant) {
    // Numbers, of which most calls have one or two, own nothing.
    if (variant->vt <= VT_DATE || variant->vt == VT_BOOL) {
        variant->vt = VT_EMPTY;
        return S_OK;
    }
    if (!isKnown(variant->vt)) return DISP_E_BADVARTYPE;
    if ((variant->vt & VT_BYREF) == 0) {
        if ((variant->vt & VT_ARRAY) != 0) {
            if (FAILED(SafeArrayDestroy(variant->parray))) return DISP_E_ARRAYISLOCKED;
        } else if (variant->vt == VT_BSTR) {
            SysFreeString(variant->bstrVal);
        } else if (variant->vt == VT_DISPATCH || variant->vt == VT_UNKNOWN) {
            if (variant->punkVal != nullptr) variant->punkVal->Release();
        }
    }
    variant->vt = VT_EMPTY;
    return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) {
    if (target == source) return S_OK;
    if (!isKnown(source->vt)) return DISP_E_BADVARTYPE;
    VARIANT copy = *source;
    if (const HRESULT owned = own(copy); FAILED(owned)) return owned;
    if (const HRESULT cleared = VariantClear(target); FAILED(cleared)) {
        VariantClear(&copy);
        return cleared;
    }
    *target = copy;
    return S_OK;
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source) {
    if ((source->vt & VT_BYREF) == 0) return VariantCopy(target, source);
    VARIANT value = {};
    const HRESULT read = readReference(*source, value);
    return FAILED(read) ? read : VariantCopy(target, &value);
}
