#include "mfc/file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "win/native_path.h"

namespace {

int openFlags(UINT flags) {
    int native = O_RDONLY;
    if ((flags & CFile::modeWrite) != 0) native = O_WRONLY;
    if ((flags & CFile::modeReadWrite) != 0) native = O_RDWR;
    if ((flags & CFile::modeCreate) != 0) {
        native |= O_CREAT;
        if ((flags & CFile::modeNoTruncate) == 0) native |= O_TRUNC;
    }
    return native | O_CLOEXEC;
}

const char* streamMode(UINT flags) {
    if ((flags & CFile::modeReadWrite) != 0) return "r+";
    return (flags & CFile::modeWrite) != 0 ? "w" : "r";
}

/// Opens a stream; null with errno on failure. A folder is no file.
std::FILE* openStream(const std::string& path, UINT flags) {
    constexpr mode_t kPermissions = 0666;
    const int descriptor = ::open(path.c_str(), openFlags(flags), kPermissions);
    if (descriptor < 0) return nullptr;
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        ::close(descriptor);
        errno = EISDIR;
        return nullptr;
    }
    return ::fdopen(descriptor, streamMode(flags));
}

/// Windows tells a missing folder from a missing file.
int causeOf(int error, const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (error == ENOENT && slash != std::string::npos && slash > 0) {
        if (::access(path.substr(0, slash).c_str(), F_OK) != 0) return CFileException::badPath;
    }
    return CFileException::ErrnoToException(error);
}

} // namespace

CFile::CFile(LPCTSTR path, UINT flags) {
    CFileException error;
    if (CFile::Open(path, flags, &error) == FALSE) {
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
    }
}

CFile::~CFile() { CFile::Abort(); }

BOOL CFile::Open(LPCTSTR path, UINT flags, CFileException* error) {
    CFile::Abort();
    path_ = path;
    const std::string native = headless::nativePath(path_.GetString());
    stream_ = openStream(native, flags);
    if (stream_ != nullptr) return TRUE;
    if (error != nullptr) {
        const int number = errno;
        error->m_cause = causeOf(number, native);
        error->m_lOsError = number;
        error->m_strFileName = path_;
    }
    return FALSE;
}

void CFile::fail() const {
    const int error = errno;
    AfxThrowFileException(CFileException::ErrnoToException(error), error, path_);
}

std::FILE* CFile::stream() const {
    if (stream_ == nullptr) AfxThrowFileException(CFileException::invalidFile, EBADF, path_);
    return stream_;
}

void CFile::Close() {
    std::FILE* const closing = stream();
    stream_ = nullptr;
    if (std::fclose(closing) != 0) fail();
}

void CFile::Abort() {
    if (stream_ != nullptr) std::fclose(stream_);
    stream_ = nullptr;
}

void CFile::Flush() {
    if (stream_ != nullptr && std::fflush(stream_) != 0) fail();
}

UINT CFile::Read(void* buffer, UINT count) {
    const std::size_t length = std::fread(buffer, 1, count, stream());
    if (length < count && std::ferror(stream_) != 0) fail();
    return static_cast<UINT>(length);
}

void CFile::Write(const void* buffer, UINT count) {
    if (std::fwrite(buffer, 1, count, stream()) != count) fail();
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (from > end) AfxThrowInvalidArgException();
    if (::fseeko(stream(), offset, kOrigins[from]) != 0) {
        AfxThrowFileException(CFileException::badSeek, errno, path_);
    }
    return GetPosition();
}

ULONGLONG CFile::GetPosition() const {
    const off_t position = ::ftello(stream());
    if (position < 0) fail();
    return static_cast<ULONGLONG>(position);
}

ULONGLONG CFile::GetLength() const {
    struct stat status {};
    if (std::fflush(stream()) != 0 || ::fstat(::fileno(stream_), &status) != 0) fail();
    return static_cast<ULONGLONG>(status.st_size);
}

void CFile::SetLength(ULONGLONG length) {
    if (std::fflush(stream()) != 0 ||
        ::ftruncate(::fileno(stream_), static_cast<off_t>(length)) != 0) {
        fail();
    }
    Seek(static_cast<LONGLONG>(length), begin);
}

CString CFile::GetFileName() const {
    CString slashed = path_;
    slashed.Replace(L'\\', L'/');
    return path_.Mid(slashed.ReverseFind(L'/') + 1);
}

void CFile::Remove(LPCTSTR path) {
    if (::unlink(headless::nativePath(path).c_str()) != 0) {
        AfxThrowFileException(CFileException::ErrnoToException(errno), errno, path);
    }
}

void CFile::Rename(LPCTSTR oldPath, LPCTSTR newPath) {
    const std::string from = headless::nativePath(oldPath);
    const std::string to = headless::nativePath(newPath);
    // An existing file is not replaced.
    const bool exists = ::access(to.c_str(), F_OK) == 0;
    if (exists) errno = EACCES;
    if (exists || std::rename(from.c_str(), to.c_str()) != 0) {
        AfxThrowFileException(CFileException::ErrnoToException(errno), errno, oldPath);
    }
}
