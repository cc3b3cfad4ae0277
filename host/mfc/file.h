// MFC's files.
//
// Paths may use '\' or '/'. Failures raise CFileException*, except that Open() answers FALSE.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "mfc/file_exception.h"
#include "mfc/string.h"
#include "win/types.h"

/// A file of bytes.
class CFile : public CObject {
public:
    enum OpenFlags : UINT {
        modeRead = 0x0,
        modeWrite = 0x1,
        modeReadWrite = 0x2,
        shareCompat = 0x0,
        shareExclusive = 0x10,
        shareDenyWrite = 0x20,
        shareDenyRead = 0x30,
        shareDenyNone = 0x40,
        modeNoInherit = 0x80,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile() = default;
    CFile(LPCTSTR path, UINT flags);
    ~CFile() override;

    /// Opens a file. modeCreate makes a missing one and empties an existing one, which
    /// modeNoTruncate keeps; share modes have no effect here.
    ///
    /// @param error  told the cause when the result is FALSE; may be null.
    virtual BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr);
    virtual void Close();
    /// Closes without an exception.
    virtual void Abort();
    virtual void Flush();

    /// Reads up to `count` bytes and returns how many there were.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);

    /// Moves and returns the position from the beginning.
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    [[nodiscard]] virtual ULONGLONG GetPosition() const;
    [[nodiscard]] virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG length);

    [[nodiscard]] CString GetFilePath() const { return path_; }
    [[nodiscard]] CString GetFileName() const;

    static void Remove(LPCTSTR path);
    static void Rename(LPCTSTR oldPath, LPCTSTR newPath);

protected:
    [[noreturn]] void fail() const;
    /// The stream; raises an exception when the file is not open.
    [[nodiscard]] std::FILE* stream() const;

private:
    std::FILE* stream_ = nullptr;
    CString path_;
};

/// A file of text lines.
///
/// In text mode, which is the default, a line ends with CR LF in the file and LF in the program,
/// Ctrl+Z ends the text, and the bytes are the session's ANSI code page. In binary mode texts are
/// UTF-16 units without change.
class CStdioFile : public CFile {
public:
    CStdioFile() = default;
    CStdioFile(LPCTSTR path, UINT flags);

    BOOL Open(LPCTSTR path, UINT flags, CFileException* error = nullptr) override;

    ULONGLONG Seek(LONGLONG offset, UINT from) override;

    /// Reads a line without its end; FALSE at the end of the file.
    virtual BOOL ReadString(CString& line);
    /// Reads a line with its end, at most `capacity` - 1 characters; null at the end of the file.
    virtual LPTSTR ReadString(LPTSTR text, UINT capacity);
    virtual void WriteString(LPCTSTR text);

private:
    /// The bytes of the next line, its LF included; a CR LF is one LF.
    std::string nextLineBytes();
    std::wstring nextLine();

    bool isBinary_ = false;
    std::wstring pending_; // The rest of a line that did not fit the caller's buffer.
};
