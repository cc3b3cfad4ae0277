// What went wrong with a file.
#pragma once

#include "mfc/exception.h"
#include "mfc/string.h"

class CFileException : public CException {
public:
    enum {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG osError = -1, LPCTSTR fileName = nullptr)
        : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

    /// The cause that an errno of the C library means.
    static int ErrnoToException(int error);

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;

protected:
    [[nodiscard]] std::wstring description() const override;
};

[[noreturn]] void AfxThrowFileException(int cause, LONG osError = -1, LPCTSTR fileName = nullptr);
