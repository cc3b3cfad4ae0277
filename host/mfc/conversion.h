// Short-lived conversions between wide and narrow text.
#pragma once

#include <string>

#include "win/code_page.h"
#include "win/code_page_calls.h"

/// Narrow text of a wide one for as long as the object lives; null for null.
class CW2A {
public:
    explicit CW2A(LPCWSTR text, UINT codePage = CP_ACP)
        : text_(text == nullptr ? "" : headless::encode(text, codePage)),
          m_psz(text == nullptr ? nullptr : text_.data()) {}
    CW2A(const CW2A&) = delete;
    CW2A& operator=(const CW2A&) = delete;

    operator LPSTR() const { return m_psz; }

private:
    std::string text_;

public:
    LPSTR m_psz;
};

/// Wide text of a narrow one for as long as the object lives; null for null.
class CA2W {
public:
    explicit CA2W(LPCSTR text, UINT codePage = CP_ACP)
        : text_(text == nullptr ? L"" : headless::decode(text, codePage)),
          m_psz(text == nullptr ? nullptr : text_.data()) {}
    CA2W(const CA2W&) = delete;
    CA2W& operator=(const CA2W&) = delete;

    operator LPWSTR() const { return m_psz; }

private:
    std::wstring text_;

public:
    LPWSTR m_psz;
};

/// Wide text handed on as it is.
class CW2W {
public:
    explicit CW2W(LPCWSTR text, UINT /*codePage*/ = CP_ACP) : m_psz(const_cast<LPWSTR>(text)) {}
    operator LPWSTR() const { return m_psz; }

    LPWSTR m_psz;
};

using CT2A = CW2A;
using CT2CA = CW2A;
using CW2CA = CW2A;
using CA2T = CA2W;
using CA2CT = CA2W;
using CA2CW = CA2W;
using CT2W = CW2W;
using CT2CW = CW2W;
using CW2T = CW2W;
using CW2CT = CW2W;
