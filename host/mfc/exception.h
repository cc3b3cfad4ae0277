// MFC's exceptions: thrown and caught as pointers, freed with Delete().
#pragma once

#include <string>

#include "mfc/object.h"
#include "win/types.h"

class CException : public CObject {
public:
    CException() = default;
    explicit CException(BOOL /*autoDelete*/) {}

    /// Frees the exception.
    void Delete() { delete this; }

    /// Writes what happened, cut to `capacity` characters with the NUL. FALSE when there is nothing
    /// to tell.
    virtual BOOL GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext = nullptr) const;

protected:
    [[nodiscard]] virtual std::wstring description() const { return {}; }
};

class CSimpleException : public CException {
public:
    using CException::CException;
};

class CMemoryException : public CSimpleException {
public:
    using CSimpleException::CSimpleException;

protected:
    [[nodiscard]] std::wstring description() const override;
};

class CNotSupportedException : public CSimpleException {
public:
    using CSimpleException::CSimpleException;

protected:
    [[nodiscard]] std::wstring description() const override;
};

class CResourceException : public CSimpleException {
public:
    using CSimpleException::CSimpleException;

protected:
    [[nodiscard]] std::wstring description() const override;
};

class CInvalidArgException : public CSimpleException {
public:
    using CSimpleException::CSimpleException;

protected:
    [[nodiscard]] std::wstring description() const override;
};

class CUserException : public CSimpleException {
public:
    using CSimpleException::CSimpleException;
};

[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowNotSupportedException();
[[noreturn]] void AfxThrowResourceException();
[[noreturn]] void AfxThrowInvalidArgException();
[[noreturn]] void AfxThrowUserException();

// MFC's own words for the C++ statements.
#define TRY try
#define CATCH(class, e) catch (class * e)
#define AND_CATCH(class, e) catch (class * e)
#define END_CATCH
#define THROW(e) throw e
#define THROW_LAST() throw
