#include "mfc/ole_exception.h"

SCODE COleException::Process(const CException* exception) {
    if (const auto* ole = dynamic_cast<const COleException*>(exception)) return ole->m_sc;
    if (dynamic_cast<const CMemoryException*>(exception) != nullptr) return E_OUTOFMEMORY;
    return E_FAIL;
}

std::wstring COleException::description() const {
    struct Text {
        SCODE status;
        const wchar_t* text;
    };
    static constexpr Text kTexts[] = {
        {DISP_E_MEMBERNOTFOUND, L"Member not found."},
        {DISP_E_UNKNOWNNAME, L"Unknown name."},
        {DISP_E_PARAMNOTFOUND, L"Parameter not found."},
        {DISP_E_TYPEMISMATCH, L"Type mismatch."},
        {DISP_E_OVERFLOW, L"Out of present range."},
        {DISP_E_BADINDEX, L"Invalid index."},
        {DISP_E_BADPARAMCOUNT, L"Invalid number of parameters."},
    };
    for (const Text& known : kTexts) {
        if (known.status == m_sc) return known.text;
    }
    CString text;
    text.Format(L"The automation call failed with status 0x%08X.", static_cast<unsigned>(m_sc));
    return text.GetString();
}

void AfxThrowOleException(SCODE status) {
    if (status == E_OUTOFMEMORY) AfxThrowMemoryException();
    throw new COleException(status);
}

void AfxThrowOleDispatchException(WORD code, LPCTSTR description, UINT helpId) {
    throw new COleDispatchException(description, helpId, code);
}
