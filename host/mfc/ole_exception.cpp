#include "mfc/ole_exception.h"

#include <cwchar>

std::wstring COleException::description() const {
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"Automation failed with code 0x%08X.",
                  static_cast<unsigned>(m_sc));
    return text;
}

std::wstring COleDispatchException::description() const {
    return static_cast<LPCTSTR>(m_strDescription);
}

void AfxThrowOleException(SCODE code) { throw new COleException(code); }
