// What went wrong with an automation call.
#pragma once

#include "mfc/exception.h"
#include "mfc/string.h"
#include "win/variant.h"

/// A call that failed by its status code alone.
class COleException : public CException {
public:
    explicit COleException(SCODE code = E_FAIL) : m_sc(code) {}

    /// The status code of any exception; E_OUTOFMEMORY, or E_FAIL for one that carries none.
    static SCODE Process(const CException* exception);

    SCODE m_sc;

protected:
    [[nodiscard]] std::wstring description() const override;
};

/// A member that failed and told why.
class COleDispatchException : public CException {
public:
    COleDispatchException(LPCTSTR description, UINT helpId, WORD code)
        : m_wCode(code), m_strDescription(description), m_dwHelpContext(helpId) {}

    WORD m_wCode;
    CString m_strDescription;
    DWORD m_dwHelpContext;
    CString m_strHelpFile;
    CString m_strSource;
    SCODE m_scError = 0;

protected:
    [[nodiscard]] std::wstring description() const override { return m_strDescription.GetString(); }
};

/// Throws CMemoryException for E_OUTOFMEMORY, else COleException.
[[noreturn]] void AfxThrowOleException(SCODE status);
[[noreturn]] void AfxThrowOleDispatchException(WORD code, LPCTSTR description, UINT helpId = 0);
