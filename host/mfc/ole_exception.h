// What went wrong in automation.
#pragma once

#include "mfc/exception.h"
#include "mfc/string.h"
#include "win/variant.h"

/// A call that could not be made.
class COleException : public CException {
public:
    explicit COleException(SCODE code) : m_sc(code) {}

    SCODE m_sc;

protected:
    [[nodiscard]] std::wstring description() const override;
};

/// A call that was made, and that the object says went wrong.
class COleDispatchException : public CException {
public:
    COleDispatchException(LPCTSTR text, UINT helpId, WORD code)
        : m_wCode(code), m_strDescription(text), m_dwHelpContext(helpId) {}

    WORD m_wCode;
    CString m_strDescription;
    DWORD m_dwHelpContext;
    CString m_strHelpFile;
    CString m_strSource;
    SCODE m_scError = 0;

protected:
    [[nodiscard]] std::wstring description() const override;
};

[[noreturn]] void AfxThrowOleException(SCODE code);
