// MFC's exceptions: thrown and caught as pointers, freed with Delete().
#pragma once

#include <string>

#include "mfc/object.h"
#include "win/types.h"

class CException : public CObject {
public:
    CException() = default;
    /// @param autoDelete  FALSE for an exception that is not on the heap.
    explicit CException(BOOL autoDelete) : isOnHeap_(autoDelete != FALSE) {}

    /// Frees an exception on the heap.
    void Delete() {
        if (isOnHeap_) delete this;
    }

    /// Writes what happened, cut to `capacity` characters with the NUL. FALSE when there is nothing
    /// to tell.
    virtual BOOL GetErrorMessage(LPTSTR text, UINT capacity, UINT* helpContext = nullptr) const;
    /// Shows what happened, or the string resource for an exception that does not tell, in a
    /// message box and returns its answer.
    virtual int ReportError(UINT type = 0, UINT messageId = 0);

protected:
    [[nodiscard]] virtual std::wstring description() const { return {}; }

private:
    bool isOnHeap_ = true;
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
