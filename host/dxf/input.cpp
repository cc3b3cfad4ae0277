#include "dxf/input.h"

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
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
    if (size == 0) return input;

    void* const address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor.get(), 0);
    if (address == MAP_FAILED) {
        refusal = reasonOf(errno);
        return nullptr;
    }
    ::madvise(address, size, MADV_SEQUENTIAL);
    input->mapping_ = address;
    input->bytes_ = {static_cast<const char*>(address), size};
    return input;
}

std::shared_ptr<const DxfInput> DxfInput::fromMemory(std::string bytes) {
    std::shared_ptr<DxfInput> input(new DxfInput);
    input->buffer_ = std::move(bytes);
    input->bytes_ = input->buffer_;
    return input;
}

DxfInput::~DxfInput() {
    if (mapping_ != nullptr) ::munmap(mapping_, bytes_.size());
}

} // namespace headless
