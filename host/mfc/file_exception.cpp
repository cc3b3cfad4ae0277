#include "mfc/file_exception.h"

#include <cerrno>

int CFileException::ErrnoToException(int error) {
    switch (error) {
    case 0:
        return none;
    case ENOENT:
        return fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
        return badPath;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case ENOTEMPTY:
        return removeCurrentDir;
    case ESPIPE:
        return badSeek;
    case EIO:
        return hardIO;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return diskFull;
    default:
        return genericException;
    }
}

std::wstring CFileException::description() const {
    const std::wstring name =
        m_strFileName.IsEmpty() ? L"an unnamed file" : m_strFileName.GetString();
    switch (m_cause) {
    case none:
        return L"No error occurred.";
    case fileNotFound:
        return name + L" was not found.";
    case badPath:
        return name + L" contains an incorrect path.";
    case tooManyOpenFiles:
        return L"Too many open files; " + name + L" cannot be opened.";
    case accessDenied:
        return L"Access to " + name + L" was denied.";
    case invalidFile:
        return name + L" is not open.";
    case removeCurrentDir:
        return name + L" is a folder in use.";
    case badSeek:
        return L"A position in " + name + L" cannot be reached.";
    case hardIO:
        return L"A hardware error was reported while accessing " + name + L".";
    case diskFull:
        return L"The disk is full while accessing " + name + L".";
    case endOfFile:
        return name + L" ended unexpectedly.";
    default:
        return L"An error occurred while accessing " + name + L".";
    }
}

void AfxThrowFileException(int cause, LONG osError, LPCTSTR fileName) {
    throw new CFileException(cause, osError, fileName);
}
