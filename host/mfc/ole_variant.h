// COleVariant: MFC's variant that frees what it owns.
#pragma once

#include "mfc/string.h"
#include "win/variant.h"

class COleVariant : public tagVARIANT {
public:
    COleVariant() { VariantInit(this); }
    COleVariant(const VARIANT& source);
    COleVariant(LPCVARIANT source) : COleVariant(*source) {}
    COleVariant(const COleVariant& source) : COleVariant(static_cast<const VARIANT&>(source)) {}
    /// A text; the only type that is told beside it here is VT_BSTR.
    COleVariant(LPCTSTR text, VARTYPE type = VT_BSTR);
    COleVariant(CString& text) : COleVariant(text.GetString()) {}
    COleVariant(BYTE value);
    /// VT_I2 or VT_BOOL.
    COleVariant(short value, VARTYPE type = VT_I2);
    /// VT_I4, VT_ERROR or VT_BOOL; the low 32 bits count.
    COleVariant(long value, VARTYPE type = VT_I4);
    COleVariant(float value);
    COleVariant(double value);
    ~COleVariant() { VariantClear(this); }

    const COleVariant& operator=(const VARIANT& source);
    const COleVariant& operator=(LPCVARIANT source) { return *this = *source; }
    const COleVariant& operator=(const COleVariant& source) {
        return *this = static_cast<const VARIANT&>(source);
    }
    const COleVariant& operator=(LPCTSTR text) { return take(COleVariant(text)); }
    const COleVariant& operator=(const CString& text) { return *this = text.GetString(); }
    const COleVariant& operator=(BYTE value) { return take(COleVariant(value)); }
    const COleVariant& operator=(short value) { return take(COleVariant(value)); }
    const COleVariant& operator=(long value) { return take(COleVariant(value)); }
    const COleVariant& operator=(float value) { return take(COleVariant(value)); }
    const COleVariant& operator=(double value) { return take(COleVariant(value)); }

    /// Same type and value; texts by their characters, objects by identity.
    BOOL operator==(const VARIANT& other) const;

    operator LPVARIANT() { return this; }
    operator LPCVARIANT() const { return this; }

    void Clear() { VariantClear(this); }
    /// Converts in place, or from `source`; throws a COleException or CMemoryException.
    void ChangeType(VARTYPE type, LPVARIANT source = nullptr);
    /// Takes over what `source` owns, and leaves it empty.
    void Attach(VARIANT& source);
    /// Gives what it owns to the caller.
    VARIANT Detach();

private:
    /// `value` is a temporary.
    const COleVariant& take(COleVariant&& value);
};
