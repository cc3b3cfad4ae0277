#include "mfc/ole_variant.h"

#include <utility>

#include "mfc/diagnostics.h"
#include "mfc/ole_exception.h"
#include "win/owned_variant.h"

namespace {

void check(HRESULT status) {
    if (FAILED(status)) AfxThrowOleException(status);
}

} // namespace

COleVariant::COleVariant(const VARIANT& source) : COleVariant() {
    check(VariantCopy(this, &source));
}

COleVariant::COleVariant(LPCTSTR text, VARTYPE type) : COleVariant() {
    ENSURE(type == VT_BSTR);
    bstrVal = SysAllocString(text);
    vt = VT_BSTR;
}

COleVariant::COleVariant(BYTE value) : COleVariant() {
    vt = VT_UI1;
    bVal = value;
}

COleVariant::COleVariant(short value, VARTYPE type) : COleVariant() {
    ENSURE(type == VT_I2 || type == VT_BOOL);
    vt = type;
    iVal = type == VT_BOOL && value != 0 ? VARIANT_TRUE : value;
}

COleVariant::COleVariant(long value, VARTYPE type) : COleVariant() {
    ENSURE(type == VT_I4 || type == VT_ERROR || type == VT_BOOL);
    vt = type;
    if (type == VT_BOOL) {
        boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    } else {
        lVal = static_cast<LONG>(value);
    }
}

COleVariant::COleVariant(float value) : COleVariant() {
    vt = VT_R4;
    fltVal = value;
}

COleVariant::COleVariant(double value) : COleVariant() {
    vt = VT_R8;
    dblVal = value;
}

const COleVariant& COleVariant::operator=(const VARIANT& source) {
    check(VariantCopy(this, &source));
    return *this;
}

BOOL COleVariant::operator==(const VARIANT& other) const {
    if (vt != other.vt) return FALSE;
    switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
        return TRUE;
    case VT_BSTR:
        return headless::textOf(bstrVal) == headless::textOf(other.bstrVal) ? TRUE : FALSE;
    case VT_UI1:
    case VT_I1:
        return bVal == other.bVal ? TRUE : FALSE;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return iVal == other.iVal ? TRUE : FALSE;
    case VT_R4:
        return fltVal == other.fltVal ? TRUE : FALSE;
    case VT_R8:
    case VT_DATE:
        return dblVal == other.dblVal ? TRUE : FALSE;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        return lVal == other.lVal ? TRUE : FALSE;
    default:
        return llVal == other.llVal ? TRUE : FALSE;
    }
}

void COleVariant::ChangeType(VARTYPE type, LPVARIANT source) {
    if (source == nullptr) source = this;
    if (source != this || type != vt) check(VariantChangeType(this, source, 0, type));
}

void COleVariant::Attach(VARIANT& source) {
    Clear();
    static_cast<VARIANT&>(*this) = std::exchange(source, VARIANT{});
}

VARIANT COleVariant::Detach() { return std::exchange(static_cast<VARIANT&>(*this), VARIANT{}); }

const COleVariant& COleVariant::take(COleVariant&& value) {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(value));
    return *this;
}
