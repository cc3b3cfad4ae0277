#include "win/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <memory>

namespace headless {
namespace {

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

/// The file itself when `path` is a link that leads to one.
std::string resolvedLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr),
                                                               &std::free);
    return resolved == nullptr ? path : std::string(resolved.get());
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// Calls `make` with one name in the target's folder after the other while files of these names
/// are there. Returns the name that was free; empty on any other failure.
template <class Make>
std::string withFreeName(const std::string& target, Make make) {
    static std::atomic<unsigned> count{0};
    const std::string prefix = folderOf(target) + ".headless-" + std::to_string(::getpid()) + "-";
    while (true) { // A process of the same number may have left one when it was killed.
        std::string name = prefix + std::to_string(++count);
        if (make(name.c_str())) return name;
        if (errno != EEXIST) return {};
    }
}

/// The owner first, since a change of owner takes permissions away.
bool takeOver(int descriptor, const struct stat& old) {
    constexpr mode_t kPermissions = 07777;
    if (old.st_uid != ::geteuid() || old.st_gid != ::getegid()) {
        if (::fchown(descriptor, old.st_uid, old.st_gid) != 0 && errno != EPERM) return false;
    }
    return ::fchmod(descriptor, old.st_mode & kPermissions) == 0;
}

/// 0 when the file may be replaced.
int refusal(const std::string& path, const struct stat& old) {
    if (S_ISDIR(old.st_mode)) return EISDIR;
    const bool writable = (old.st_mode & kAnyWrite) != 0 && ::access(path.c_str(), W_OK) == 0;
    return S_ISREG(old.st_mode) && writable ? 0 : EACCES;
}

} // namespace

FileReplacement::FileReplacement(const std::string& path) : target_(resolvedLinks(path)) {
    exists_ = ::stat(target_.c_str(), &old_) == 0;
    if (exists_) error_ = refusal(target_, old_);
    if (error_ == 0) open();
}

FileReplacement::~FileReplacement() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!path_.empty()) ::unlink(path_.c_str());
}

void FileReplacement::open() {
    constexpr mode_t kMode = 0666;
    descriptor_ = ::open(folderOf(target_).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, kMode);
    if (descriptor_ < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
        path_ = withFreeName(target_, [this](const char* name) {
            descriptor_ = ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
            return descriptor_ >= 0;
        });
    }
    if (descriptor_ < 0) error_ = errno;
}

void FileReplacement::write(std::string_view bytes) {
    while (error_ == 0 && !bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            startStoring(static_cast<std::size_t>(written));
        } else if (errno != EINTR)
            error_ = errno;
    }
}

/// The disk may as well begin while the rest is being made: there is less to wait for at the end.
void FileReplacement::startStoring(std::size_t written) {
    constexpr std::size_t kMuch = 1U << 20;
    notBegun_ += written;
    if (notBegun_ < kMuch) return;
    ::sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE); // Only commit() must not fail.
    notBegun_ = 0;
}

/// Only what has a name can be renamed over another file.
bool FileReplacement::giveName() {
    if (!path_.empty()) return true;
    const std::string self = "/proc/self/fd/" + std::to_string(descriptor_);
    path_ = withFreeName(target_, [&](const char* name) {
        return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    });
    return !path_.empty();
}

bool FileReplacement::renameOver() {
    if (::rename(path_.c_str(), target_.c_str()) != 0) return false;
    path_.clear();
    return true;
}

bool FileReplacement::putInPlace(Durability durability, struct stat& status) {
    return (!exists_ || takeOver(descriptor_, old_)) &&
           (durability == Durability::kProcess || ::fsync(descriptor_) == 0) && giveName() &&
           renameOver() && ::fstat(descriptor_, &status) == 0;
}

int FileReplacement::commit(Durability durability, struct stat& status) {
    if (error_ == 0 && !putInPlace(durability, status)) error_ = errno;
    return error_;
}

int replaceFile(const std::string& path, std::string_view bytes, Durability durability,
                struct stat& status) {
    FileReplacement file(path);
    file.write(bytes);
    return file.commit(durability, status);
}

int syncFile(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return errno;
    const int error = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    return error;
}

} // namespace headless
