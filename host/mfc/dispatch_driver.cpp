#include "mfc/dispatch_driver.h"

#include <array>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "win/class_objects.h"
#include "win/owned_variant.h"

using headless::OwnedVariant;

namespace {

// VTS_UI1, which is no number of VARENUM.
constexpr unsigned kByte = 0x0F;

/// The next of the caller's arguments. What is passed by address stays the caller's; only texts
/// are copies of our own.
/// @param kind  as VTS_... or VARENUM say.
VARIANT nextArgument(unsigned kind, std::va_list& list) {
    VARIANT value = {};
    value.vt = static_cast<VARTYPE>(kind);
    if (kind == kByte) value.vt = VT_UI1;
    switch (kind) {
    case kByte:
    case VT_UI1:
        value.bVal = static_cast<BYTE>(va_arg(list, int));
        break;
    case VT_I2:
        value.iVal = static_cast<SHORT>(va_arg(list, int));
        break;
    case VT_BOOL:
        value.boolVal = va_arg(list, int) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VT_I4:
    case VT_UI4:
    case VT_ERROR:
        // A caller's long and LONG alike.
        value.lVal = static_cast<LONG>(va_arg(list, long));
        break;
    case VT_I8:
        value.llVal = va_arg(list, LONGLONG);
        break;
    case VT_R4:
        value.fltVal = static_cast<FLOAT>(va_arg(list, double));
        break;
    case VT_R8:
    case VT_DATE:
        value.dblVal = va_arg(list, double);
        break;
    case VT_CY:
        value.cyVal = *va_arg(list, const CY*);
        break;
    case VT_BSTR:
        value.bstrVal = SysAllocString(va_arg(list, LPCTSTR));
        break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        value.punkVal = va_arg(list, IUnknown*);
        break;
    case VT_VARIANT:
        value = *va_arg(list, const VARIANT*);
        break;
    default:
        AfxThrowOleException(DISP_E_BADVARTYPE);
    }
    return value;
}

/// The arguments of one call, the last one first.
class Parameters {
public:
    Parameters(const BYTE* kinds, std::va_list& list)
        : kinds_(kinds),
          count_(kinds == nullptr ? 0 : std::strlen(reinterpret_cast<LPCSTR>(kinds))) {
        if (count_ > kFew) many_.resize(count_);
        for (std::size_t i = 0; i < count_; ++i)
            values()[count_ - 1 - i] = nextArgument(kinds[i], list);
    }
    ~Parameters() {
        for (std::size_t i = 0; i < count_; ++i) {
            const bool isText = kinds_[i] == VT_BSTR;
            if (isText) SysFreeString(values()[count_ - 1 - i].bstrVal);
        }
    }
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;

    DISPPARAMS forCall(bool isPut, DISPID& putName) {
        DISPPARAMS parameters = {values(), nullptr, static_cast<UINT>(count_), 0};
        if (isPut) {
            putName = DISPID_PROPERTYPUT;
            parameters.rgdispidNamedArgs = &putName;
            parameters.cNamedArgs = 1;
        }
        return parameters;
    }

private:
    static constexpr std::size_t kFew = 4;

    VARIANT* values() { return count_ > kFew ? many_.data() : few_.data(); }

    const BYTE* kinds_;
    std::size_t count_;
    std::array<VARIANT, kFew> few_; // as many as there are arguments
    std::vector<VARIANT> many_;
};

CString takeText(BSTR& text) {
    const CString taken(text == nullptr ? L"" : text);
    SysFreeString(std::exchange(text, nullptr));
    return taken;
}

[[noreturn]] void throwException(EXCEPINFO& info) {
    if (info.pfnDeferredFillIn != nullptr) info.pfnDeferredFillIn(&info);
    auto exception = std::make_unique<COleDispatchException>(nullptr, 0, info.wCode);
    exception->m_strSource = takeText(info.bstrSource);
    exception->m_strDescription = takeText(info.bstrDescription);
    exception->m_strHelpFile = takeText(info.bstrHelpFile);
    exception->m_dwHelpContext = info.dwHelpContext;
    exception->m_scError = info.scode;
    throw exception.release();
}

/// Gives a value of the asked type to the caller.
void store(VARIANT& value, VARTYPE type, void* target) {
    switch (type) {
    case VT_UI1:
    case VT_I1:
        *static_cast<BYTE*>(target) = value.bVal;
        break;
    case VT_I2:
    case VT_UI2:
        *static_cast<SHORT*>(target) = value.iVal;
        break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_ERROR:
        *static_cast<LONG*>(target) = value.lVal;
        break;
    case VT_R4:
        *static_cast<FLOAT*>(target) = value.fltVal;
        break;
    case VT_BOOL:
        *static_cast<BOOL*>(target) = value.boolVal != VARIANT_FALSE ? TRUE : FALSE;
        break;
    case VT_BSTR:
        *static_cast<CString*>(target) = value.bstrVal;
        break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        *static_cast<IUnknown**>(target) = std::exchange(value.punkVal, nullptr);
        break;
    default: // Eight bytes: reals, dates, money, large integers.
        *static_cast<LONGLONG*>(target) = value.llVal;
        break;
    }
}

} // namespace

COleDispatchDriver::COleDispatchDriver(const COleDispatchDriver& source)
    : m_lpDispatch(source.m_lpDispatch) {
    if (m_lpDispatch != nullptr) m_lpDispatch->AddRef();
}

COleDispatchDriver& COleDispatchDriver::operator=(const COleDispatchDriver& source) {
    if (source.m_lpDispatch != nullptr) source.m_lpDispatch->AddRef();
    AttachDispatch(source.m_lpDispatch);
    return *this;
}

BOOL COleDispatchDriver::CreateDispatch(REFCLSID classId, COleException* exception) {
    m_bAutoRelease = TRUE;
    void* made = nullptr;
    const HRESULT status = CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_IDispatch, &made);
    if (SUCCEEDED(status)) {
        AttachDispatch(static_cast<IDispatch*>(made));
        return TRUE;
    }
    if (exception != nullptr) exception->m_sc = status;
    return FALSE;
}

BOOL COleDispatchDriver::CreateDispatch(LPCTSTR programId, COleException* exception) {
    CLSID classId = CLSID_NULL;
    const HRESULT status = CLSIDFromProgID(programId, &classId);
    if (SUCCEEDED(status)) return CreateDispatch(classId, exception);
    if (exception != nullptr) exception->m_sc = status;
    return FALSE;
}

void COleDispatchDriver::AttachDispatch(LPDISPATCH dispatch, BOOL autoRelease) {
    ReleaseDispatch();
    m_lpDispatch = dispatch;
    m_bAutoRelease = autoRelease;
}

LPDISPATCH COleDispatchDriver::DetachDispatch() { return std::exchange(m_lpDispatch, nullptr); }

void COleDispatchDriver::ReleaseDispatch() {
    LPDISPATCH const released = DetachDispatch();
    if (released != nullptr && m_bAutoRelease != FALSE) released->Release();
}

VARIANT COleDispatchDriver::invoke(DISPID member, WORD flags, VARTYPE resultType, const BYTE* kinds,
                                   std::va_list& arguments) const {
    if (m_lpDispatch == nullptr) AfxThrowOleException(E_POINTER);
    Parameters values(kinds, arguments);
    DISPID putName = 0;
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters = values.forCall(isPut, putName);
    VARIANT result = {};
    EXCEPINFO exception = {};
    UINT badArgument = 0;
    const HRESULT status =
        m_lpDispatch->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                             resultType == VT_EMPTY ? nullptr : &result, &exception, &badArgument);
    if (status == DISP_E_EXCEPTION) throwException(exception);
    if (FAILED(status)) {
        VariantClear(&result);
        AfxThrowOleException(status);
    }
    return result;
}

void COleDispatchDriver::InvokeHelperV(DISPID member, WORD flags, VARTYPE resultType, void* result,
                                       const BYTE* kinds, std::va_list arguments) {
    std::va_list list;
    va_copy(list, arguments);
    VARIANT raw;
    try {
        raw = invoke(member, flags, resultType, kinds, list);
    } catch (CException*) {
        va_end(list);
        throw;
    }
    va_end(list);
    if (resultType == VT_EMPTY) return;
    COleVariant answer;
    answer.Attach(raw);
    if (resultType == VT_VARIANT) {
        *static_cast<VARIANT*>(result) = answer.Detach();
        return;
    }
    // A property that is no object right now, such as the active workbook of none.
    const bool noObject = resultType == VT_DISPATCH && answer.vt == VT_EMPTY;
    if (noObject) {
        answer.pdispVal = nullptr;
    } else {
        answer.ChangeType(resultType);
    }
    store(answer, resultType, result);
}

void COleDispatchDriver::InvokeHelper(DISPID member, WORD flags, VARTYPE resultType, void* result,
                                      const BYTE* kinds, ...) {
    std::va_list arguments;
    va_start(arguments, kinds);
    try {
        InvokeHelperV(member, flags, resultType, result, kinds, arguments);
    } catch (CException*) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}

void COleDispatchDriver::GetProperty(DISPID member, VARTYPE type, void* value) const {
    const_cast<COleDispatchDriver*>(this)->InvokeHelper(member, DISPATCH_PROPERTYGET, type, value,
                                                        nullptr);
}

void COleDispatchDriver::SetProperty(DISPID member, VARTYPE type, ...) {
    std::va_list arguments;
    va_start(arguments, type);
    const BYTE kinds[] = {static_cast<BYTE>(type), 0};
    const bool byReference = (type & VT_BYREF) != 0;
    try {
        InvokeHelperV(member, byReference ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT,
                      VT_EMPTY, nullptr, kinds, arguments);
    } catch (CException*) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}
