#include "dxf/input.h"

#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace headless {
namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(const std::filesystem::path& file)
        // A pipe must be refused below, not waited for.
        : value_(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~FileDescriptor() {
        if (value_ >= 0) ::close(value_);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int get() const { return value_; }

private:
    int value_;
};

std::string reasonOf(int error) {
    if (error == ENOENT) return "no such file";
    if (error == EACCES) return "not allowed to read it";
    return "cannot be opened (" + std::generic_category().message(error) + ")";
}

/// How many bytes came, fewer where the file got shorter; -1 on failure.
ssize_t readAll(int file, char* to, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got = ::read(file, to + done, size - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return got;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(done);
}

} // namespace

std::shared_ptr<const DxfInput> DxfInput::open(const std::filesystem::path& file,
                                               std::string& refusal) {
    const FileDescriptor descriptor(file);
    struct stat status {};
    if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0) {
        refusal = reasonOf(errno);
        return nullptr;
    }
    if (S_ISDIR(status.st_mode)) {
        refusal = "is a folder, not a drawing";
        return nullptr;
    }
    if (!S_ISREG(status.st_mode)) {
        refusal = "is not a regular file";
        return nullptr;
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    std::shared_ptr<DxfInput> input(new DxfInput);
    input->read_.reset(new (std::nothrow) char[size]);
    if (input->read_ == nullptr) {
        refusal = "is too large for the memory";
        return nullptr;
    }
    const ssize_t got = readAll(descriptor.get(), input->read_.get(), size);
    if (got < 0) {
        refusal = reasonOf(errno);
        return nullptr;
    }
    input->bytes_ = {input->read_.get(), static_cast<std::size_t>(got)};
    return input;
}

std::shared_ptr<const DxfInput> DxfInput::fromMemory(std::string bytes) {
    std::shared_ptr<DxfInput> input(new DxfInput);
    input->buffer_ = std::move(bytes);
    input->bytes_ = input->buffer_;
    return input;
}

} // namespace headless
