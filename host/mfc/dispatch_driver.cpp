#include "mfc/dispatch_driver.h"

#include <cstdarg>
#include <string_view>
#include <vector>

namespace {

/// A value that frees what it holds.
struct Value : VARIANT {
    Value() : VARIANT{} {}
    ~Value() { VariantClear(this); }
    Value(Value&& other) noexcept : VARIANT(other) { VariantInit(&other); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
};

Value takeArgument(VARTYPE type, std::va_list& list) {
    Value value;
    value.vt = type;
    switch (type) {
    case VT_I2:
        value.iVal = static_cast<SHORT>(va_arg(list, int));
        break;
    case VT_I4:
        value.lVal = va_arg(list, LONG);
        break;
    case VT_R4:
        value.fltVal = static_cast<float>(va_arg(list, double));
        break;
    case VT_R8:
        value.dblVal = va_arg(list, double);
        break;
    case VT_BSTR:
        value.bstrVal = SysAllocString(va_arg(list, LPCTSTR));
        break;
    case VT_DISPATCH:
        value.pdispVal = va_arg(list, LPDISPATCH);
        if (value.pdispVal != nullptr) value.pdispVal->AddRef();
        break;
    case VT_BOOL:
        value.boolVal = va_arg(list, BOOL) != FALSE ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VT_VARIANT:
        value.vt = VT_EMPTY;
        VariantCopy(&value, va_arg(list, const VARIANT*));
        break;
    default:
        value.vt = VT_EMPTY;
        AfxThrowOleException(DISP_E_BADVARTYPE);
    }
    return value;
}

template <class T>
void store(void* result, T value) {
    *static_cast<T*>(result) = value;
}

/// Hands the value to the caller, in the type asked for.
void giveResult(Value& value, VARTYPE type, void* result) {
    if (type == VT_VARIANT) {
        store<VARIANT>(result, value);
        VariantInit(&value);
        return;
    }
    if (value.vt != type) AfxThrowOleException(DISP_E_TYPEMISMATCH);
    switch (type) {
    case VT_I2:
        return store(result, value.iVal);
    case VT_I4:
        return store(result, value.lVal);
    case VT_R4:
        return store(result, value.fltVal);
    case VT_R8:
        return store(result, value.dblVal);
    case VT_BOOL:
        return store<BOOL>(result, value.boolVal != VARIANT_FALSE ? TRUE : FALSE);
    case VT_BSTR:
        *static_cast<CString*>(result) =
            CString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
        return;
    case VT_DISPATCH:
        store(result, value.pdispVal);
        VariantInit(&value);
        return;
    default:
        AfxThrowOleException(DISP_E_BADVARTYPE);
    }
}

CString takeText(BSTR text) {
    const CString copy(text, static_cast<int>(SysStringLen(text)));
    SysFreeString(text);
    return copy;
}

[[noreturn]] void throwTold(EXCEPINFO& told) {
    if (told.pfnDeferredFillIn != nullptr) told.pfnDeferredFillIn(&told);
    auto* exception = new COleDispatchException(L"", told.dwHelpContext, told.wCode);
    exception->m_strDescription = takeText(told.bstrDescription);
    exception->m_strSource = takeText(told.bstrSource);
    exception->m_strHelpFile = takeText(told.bstrHelpFile);
    exception->m_scError = told.scode;
    throw exception;
}

} // namespace

COleDispatchDriver::COleDispatchDriver(const COleDispatchDriver& other)
    : m_lpDispatch(other.m_lpDispatch) {
    if (m_lpDispatch != nullptr) m_lpDispatch->AddRef();
}

COleDispatchDriver& COleDispatchDriver::operator=(const COleDispatchDriver& other) {
    if (this == &other) return *this;
    if (other.m_lpDispatch != nullptr) other.m_lpDispatch->AddRef();
    AttachDispatch(other.m_lpDispatch);
    return *this;
}

void COleDispatchDriver::AttachDispatch(LPDISPATCH dispatch, BOOL autoRelease) {
    ReleaseDispatch();
    m_lpDispatch = dispatch;
    m_bAutoRelease = autoRelease;
}

LPDISPATCH COleDispatchDriver::DetachDispatch() {
    const LPDISPATCH dispatch = m_lpDispatch;
    m_lpDispatch = nullptr;
    return dispatch;
}

void COleDispatchDriver::ReleaseDispatch() {
    if (m_lpDispatch == nullptr) return;
    if (m_bAutoRelease) m_lpDispatch->Release();
    m_lpDispatch = nullptr;
}

void COleDispatchDriver::InvokeHelper(DISPID member, WORD flags, VARTYPE type, void* result,
                                      const char* argumentTypes, ...) {
    if (m_lpDispatch == nullptr) AfxThrowOleException(E_POINTER);
    const std::string_view types = argumentTypes == nullptr ? "" : argumentTypes;
    std::vector<Value> arguments;
    std::va_list list;
    va_start(list, argumentTypes);
    for (const char argument : types)
        arguments.push_back(takeArgument(static_cast<VARTYPE>(argument), list));
    va_end(list);

    std::vector<VARIANTARG> reversed(arguments.rbegin(), arguments.rend());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    Value answer;
    EXCEPINFO told = {};
    UINT badArgument = 0;
    const HRESULT status =
        m_lpDispatch->Invoke(member, IID_NULL, 0, flags, &parameters,
                             type == VT_EMPTY ? nullptr : &answer, &told, &badArgument);
    if (status == DISP_E_EXCEPTION) throwTold(told);
    if (FAILED(status)) AfxThrowOleException(status);
    if (type != VT_EMPTY) giveResult(answer, type, result);
}
