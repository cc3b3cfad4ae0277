#include "win/served_object.h"

#include <algorithm>

#include "win/code_page.h"

namespace headless {
namespace {

/// The value as another type; throws what the conversion answers.
OwnedVariant changed(const VARIANT& value, VARTYPE type) {
    OwnedVariant result;
    const HRESULT status = VariantChangeType(&result, &value, VARIANT_ALPHABOOL, type);
    if (FAILED(status)) throw AutomationError(status);
    return result;
}

/// Tells the caller what happened, as far as it asked.
HRESULT fail(const AutomationError& error, const wchar_t* source, EXCEPINFO* exception) {
    const std::string_view message = error.what();
    if (message.empty()) return error.status();
    if (exception != nullptr) {
        *exception = {};
        exception->bstrSource = SysAllocString(source);
        exception->bstrDescription = SysAllocString(fromUtf8(message).c_str());
        exception->scode = error.status();
    }
    return DISP_E_EXCEPTION;
}

/// Calls the first of what the flags ask for that the member can do.
OwnedVariant perform(const ServedMember& member, ServedObject& object, WORD flags,
                     const DISPPARAMS& parameters) {
    const std::span<const VARIANTARG> values(parameters.rgvarg, parameters.cArgs);
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        if (member.put == nullptr) throw AutomationError(DISP_E_MEMBERNOTFOUND);
        if (values.empty()) throw AutomationError(DISP_E_BADPARAMCOUNT);
        if (parameters.cNamedArgs != 1 || parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) {
            throw AutomationError(DISP_E_PARAMNOTFOUND);
        }
        member.put(object, CallArguments(values.subspan(1)), referred(values.front()));
        return {};
    }
    if (parameters.cNamedArgs > 0) throw AutomationError(DISP_E_NONAMEDARGS);
    const CallArguments arguments(values);
    if ((flags & DISPATCH_METHOD) != 0 && member.call != nullptr) {
        return member.call(object, arguments);
    }
    if ((flags & DISPATCH_PROPERTYGET) != 0 && member.get != nullptr) {
        return member.get(object, arguments);
    }
    throw AutomationError(DISP_E_MEMBERNOTFOUND);
}

} // namespace

const VARIANT& referred(const VARIANT& value) {
    return value.vt == (VT_BYREF | VT_VARIANT) ? *value.pvarVal : value;
}

LONG integerOf(const VARIANT& value) {
    return value.vt == VT_I4 ? value.lVal : changed(value, VT_I4).lVal;
}

double realOf(const VARIANT& value) {
    if (value.vt == VT_R8) return value.dblVal;
    return value.vt == VT_I4 ? value.lVal : changed(value, VT_R8).dblVal;
}

bool booleanOf(const VARIANT& value) {
    return (value.vt == VT_BOOL ? value.boolVal : changed(value, VT_BOOL).boolVal) != VARIANT_FALSE;
}

std::wstring textOf(const VARIANT& value) {
    if (value.vt == VT_BSTR) return std::wstring(textOf(value.bstrVal));
    return std::wstring(textOf(changed(value, VT_BSTR).bstrVal));
}

const VARIANT* CallArguments::find(std::size_t index) const {
    if (index >= reversed_.size()) return nullptr;
    const VARIANT& value = referred(reversed_[reversed_.size() - 1 - index]);
    const bool leftOut = value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
    return leftOut ? nullptr : &value;
}

LONG CallArguments::integer(std::size_t index, LONG fallback) const {
    const VARIANT* value = find(index);
    return value == nullptr ? fallback : integerOf(*value);
}

double CallArguments::real(std::size_t index, double fallback) const {
    const VARIANT* value = find(index);
    return value == nullptr ? fallback : realOf(*value);
}

bool CallArguments::boolean(std::size_t index, bool fallback) const {
    const VARIANT* value = find(index);
    return value == nullptr ? fallback : booleanOf(*value);
}

std::wstring CallArguments::text(std::size_t index) const {
    const VARIANT* value = find(index);
    return value == nullptr ? std::wstring() : textOf(*value);
}

MemberTable::MemberTable(std::initializer_list<ServedMember> members) {
    for (const ServedMember& member : members) {
        byId_.try_emplace(member.id, member);
        byName_.try_emplace(member.name, member.id);
    }
}

const ServedMember* MemberTable::find(DISPID id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &found->second;
}

const DISPID* MemberTable::find(std::wstring_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : &found->second;
}

HRESULT ServedObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                                    DISPID* ids) {
    if (!(reserved == IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (count == 0) return S_OK;
    if (const DISPID* id = members().find(std::wstring_view(names[0]))) ids[0] = *id;
    // Names after the first are those of arguments, which are not known.
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT ServedObject::Invoke(DISPID id, REFIID reserved, LCID /*locale*/, WORD flags,
                             DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                             UINT* /*badArgument*/) {
    if (!(reserved == IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (parameters == nullptr) return E_INVALIDARG;
    const ServedMember* member = members().find(id);
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    try {
        OwnedVariant answer = perform(*member, *this, flags, *parameters);
        if (result != nullptr) *result = answer.release();
        return S_OK;
    } catch (const AutomationError& error) {
        return fail(error, source(), exception);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
        return fail(AutomationError(E_FAIL, error.what()), source(), exception);
    }
}

} // namespace headless
