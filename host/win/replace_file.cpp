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

/// A new file in the target's folder; gone at the end of the scope unless it got another name.
class FileBeside {
public:
    explicit FileBeside(const std::string& target) {
        static std::atomic<unsigned> count{0};
        const std::string folder = target.substr(0, target.rfind('/') + 1);
        const std::string prefix = folder + ".headless-" + std::to_string(::getpid()) + "-";
        do { // A process of the same number may have left one when it was killed.
            path_ = prefix + std::to_string(++count);
            descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (descriptor_ < 0 && errno == EEXIST);
    }
    ~FileBeside() {
        if (descriptor_ < 0) return;
        ::close(descriptor_);
        if (!renamed_) ::unlink(path_.c_str());
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

    [[nodiscard]] bool renameTo(const std::string& target) noexcept {
        renamed_ = ::rename(path_.c_str(), target.c_str()) == 0;
        return renamed_;
    }

private:
    std::string path_;
    int descriptor_ = -1;
    bool renamed_ = false;
};

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
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

int replaceFile(const std::string& path, std::string_view bytes, Durability durability,
                struct stat& status) {
    const std::string target = resolvedLinks(path);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists) {
        if (const int error = refusal(target, old)) return error;
    }
    FileBeside file(target);
    const bool done = file.descriptor() >= 0 && writeAll(file.descriptor(), bytes) &&
                      (!exists || takeOver(file.descriptor(), old)) &&
                      (durability == Durability::kProcess || ::fsync(file.descriptor()) == 0) &&
                      file.renameTo(target) && ::fstat(file.descriptor(), &status) == 0;
    return done ? 0 : errno;
}

int syncFile(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return errno;
    const int error = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    return error;
}

} // namespace headless
