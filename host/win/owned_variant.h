// A VARIANT that frees what it owns.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "win/variant.h"

namespace headless {

class OwnedVariant : public VARIANT {
public:
    OwnedVariant() : VARIANT{} {}
    OwnedVariant(double value) : OwnedVariant() {
        vt = VT_R8;
        dblVal = value;
    }
    OwnedVariant(LONG value) : OwnedVariant() {
        vt = VT_I4;
        lVal = value;
    }
    OwnedVariant(bool value) : OwnedVariant() {
        vt = VT_BOOL;
        boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    OwnedVariant(std::wstring_view text) : OwnedVariant() {
        vt = VT_BSTR;
        bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    OwnedVariant(const std::wstring& text) : OwnedVariant(std::wstring_view(text)) {}
    OwnedVariant(const wchar_t* text) : OwnedVariant(std::wstring_view(text)) {}
    /// Takes over the caller's reference.
    OwnedVariant(IDispatch* object) : OwnedVariant() {
        vt = VT_DISPATCH;
        pdispVal = object;
    }
    OwnedVariant(OwnedVariant&& other) noexcept
        : VARIANT(std::exchange(static_cast<VARIANT&>(other), VARIANT{})) {}
    OwnedVariant& operator=(OwnedVariant&& other) noexcept {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }
    ~OwnedVariant() {
        if (vt != VT_EMPTY) VariantClear(this);
    }

    [[nodiscard]] static OwnedVariant null() {
        OwnedVariant variant;
        variant.vt = VT_NULL;
        return variant;
    }
    [[nodiscard]] static OwnedVariant date(double days) {
        OwnedVariant variant(days);
        variant.vt = VT_DATE;
        return variant;
    }
    [[nodiscard]] static OwnedVariant error(SCODE code) {
        OwnedVariant variant;
        variant.vt = VT_ERROR;
        variant.scode = code;
        return variant;
    }
    [[nodiscard]] static OwnedVariant array(SAFEARRAY* variants) {
        OwnedVariant variant;
        variant.vt = VT_ARRAY | VT_VARIANT;
        variant.parray = variants;
        return variant;
    }

    /// Gives what it owns to the caller and is empty.
    [[nodiscard]] VARIANT release() { return std::exchange(static_cast<VARIANT&>(*this), {}); }
};

/// The characters of an automation string; empty for null.
[[nodiscard]] inline std::wstring_view textOf(BSTR string) {
    return {string == nullptr ? L"" : string, SysStringLen(string)};
}

} // namespace headless
