#include "table/auto_wrap.h"

#include <vector>

#include "table/grid_to_cad_table.h"

namespace kelmor {

long autoWrap(int flags, VARIANT* result, IDispatch* object, CString name, int count,
              std::va_list arguments) {
    if (object == nullptr) return -1;
    LPOLESTR text = name.GetBuffer();
    DISPID member = DISPID_UNKNOWN;
    if (FAILED(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member))) return -1;

    // In the order given: the caller has reversed them already.
    std::vector<VARIANT> values(static_cast<std::size_t>(count) + 1);
    for (int i = 0; i < count; ++i)
        values[static_cast<std::size_t>(i)] = va_arg(arguments, VARIANT);
    DISPPARAMS parameters = {values.data(), nullptr, static_cast<UINT>(count), 0};
    DISPID put = DISPID_PROPERTYPUT;
    if ((flags & DISPATCH_PROPERTYPUT) != 0) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    // Names are looked up in the user's locale, calls are made in the system's: servers that
    // translate their names rely on it.
    const HRESULT status =
        object->Invoke(member, IID_NULL, LOCALE_SYSTEM_DEFAULT, static_cast<WORD>(flags),
                       &parameters, result, nullptr, nullptr);
    return FAILED(status) ? -1 : status;
}

long AutoWrap(int flags, VARIANT* result, IDispatch* object, CString name, int count, ...) {
    std::va_list arguments;
    va_start(arguments, count);
    const long status = autoWrap(flags, result, object, name, count, arguments);
    va_end(arguments);
    return status;
}

} // namespace kelmor

long CGridToCadTable::AutoWrap(int flags, VARIANT* result, IDispatch* object, CString name,
                               int count, ...) {
    std::va_list arguments;
    va_start(arguments, count);
    const long status = kelmor::autoWrap(flags, result, object, name, count, arguments);
    va_end(arguments);
    return status;
}
