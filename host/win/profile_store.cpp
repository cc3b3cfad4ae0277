#include "win/profile_store.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <new>

#include "win/code_page.h"
#include "win/constants.h"
#include "win/native_path.h"
#include "win/replace_file.h"

namespace headless {
namespace {

constexpr auto kSyncInterval = std::chrono::seconds(1);
constexpr std::size_t kMostFiles = 64;
constexpr off_t kMostBytes = 256 << 20; // What takes a name of settings by mistake fills no memory.

std::int64_t nanoseconds(const timespec& time) {
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    return time.tv_sec * kPerSecond + time.tv_nsec;
}

std::string configurationFolder() {
    const char* const configured = std::getenv("XDG_CONFIG_HOME");
    if (configured != nullptr && *configured == '/') return configured;
    const char* const home = std::getenv("HOME");
    return (home == nullptr ? std::string() : std::string(home)) + "/.config";
}

/// The platform's number for the system's, which knows no missing folder.
DWORD platformError(int error, const std::string& path) {
    switch (error) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT: {
        const std::string folder = path.substr(0, path.rfind('/') + 1);
        const bool folderExists = folder.empty() || ::access(folder.c_str(), F_OK) == 0;
        return folderExists ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
    }
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return ERROR_PATH_NOT_FOUND;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    case ENOMEM:
    case EFBIG:
        return ERROR_NOT_ENOUGH_MEMORY;
    case EIO:
        return ERROR_WRITE_FAULT;
    default:
        return ERROR_ACCESS_DENIED;
    }
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};

/// Reads a file to its end, which need not be where `status`, taken before, says. 0 or the error
/// number.
int readFile(const std::string& path, std::string& bytes, struct stat& status) {
    // Pipes must not be waited for.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0) return errno;
    if (!S_ISREG(status.st_mode)) return EACCES;
    if (status.st_size > kMostBytes) return EFBIG;
    bytes.resize(static_cast<std::size_t>(status.st_size) + 1); // Room to meet the end at once.
    for (std::size_t length = 0;;) {
        if (length == bytes.size()) bytes.resize(2 * length);
        const ssize_t count = ::read(file.number(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        length += static_cast<std::size_t>(count);
        if (count > 0) continue;
        bytes.resize(length);
        return 0;
    }
}

} // namespace

ProfileStore::~ProfileStore() { flush(); }

ProfileStore::Stamp ProfileStore::Stamp::of(const struct stat& status) {
    // File times come from a clock that ticks every 1 to 10 ms: what changes twice in one tick may
    // look the same both times.
    constexpr std::int64_t kTicks = 20'000'000;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    const std::int64_t changed = nanoseconds(status.st_ctim);
    return {status.st_dev,  status.st_ino,
            status.st_size, nanoseconds(status.st_mtim),
            changed,        nanoseconds(now) - changed > kTicks};
}

bool ProfileStore::Stamp::sameFile(const Stamp& other) const noexcept {
    return device == other.device && inode == other.inode && size == other.size &&
           modified == other.modified && changed == other.changed;
}

std::string ProfileStore::pathOf(std::wstring_view name) const {
    std::string path = nativePath(name);
    if (path.find('/') != std::string::npos) return path;
    const std::string folder =
        windowsFolder.empty() ? configurationFolder() + "/headless" : windowsFolder;
    return folder + "/" + path;
}

ProfileStore::File* ProfileStore::current(const std::string& path, int& error) {
    const unsigned page = resolvedCodePage(0);
    const auto known = files_.find(path);
    File* file =
        known != files_.end() && known->second.text.codePage() == page ? &known->second : nullptr;
    struct stat status {};
    if (file != nullptr && file->stamp.settled && ::stat(path.c_str(), &status) == 0 &&
        file->stamp.sameFile(Stamp::of(status))) {
        file->lastUse = ++uses_;
        return file;
    }
    std::string bytes;
    error = readFile(path, bytes, status);
    if (error != 0) return nullptr;
    const Stamp stamp = Stamp::of(status);
    if (file == nullptr || file->text.bytes() != bytes) {
        return &keep(path, ProfileText(std::move(bytes), page), stamp);
    }
    file->stamp = stamp;
    file->lastUse = ++uses_;
    return file;
}

ProfileStore::File& ProfileStore::keep(const std::string& path, ProfileText text,
                                       const Stamp& stamp) {
    auto place = files_.find(path);
    if (place == files_.end()) {
        if (files_.size() >= kMostFiles) forgetOldest();
        place = files_.emplace(path, File{std::move(text), stamp, {}}).first;
    } else {
        place->second.text = std::move(text);
        place->second.stamp = stamp;
    }
    place->second.lastUse = ++uses_;
    return place->second;
}

void ProfileStore::forgetOldest() {
    const auto oldest =
        std::min_element(files_.begin(), files_.end(), [](const auto& left, const auto& right) {
            return left.second.lastUse < right.second.lastUse;
        });
    if (oldest->second.owesSync) syncFile(oldest->first);
    files_.erase(oldest);
}

const ProfileText* ProfileStore::read(std::wstring_view name, DWORD& error) {
    const std::string path = pathOf(name);
    int failure = ENOMEM;
    const File* file = nullptr;
    try {
        file = current(path, failure);
    } catch (const std::exception&) { // No memory for a file of that size.
    }
    error = file == nullptr ? platformError(failure, path) : ERROR_SUCCESS;
    return file == nullptr ? nullptr : &file->text;
}

DWORD ProfileStore::change(std::wstring_view name, const std::function<bool(ProfileText&)>& edit) {
    const std::string path = pathOf(name);
    if (name.find_first_of(L"/\\") == std::wstring_view::npos) {
        std::error_code ignored; // Writing tells what is wrong.
        std::filesystem::create_directories(path.substr(0, path.rfind('/')), ignored);
    }
    int error = ENOMEM;
    try {
        File* file = current(path, error);
        const bool missing = file == nullptr && error == ENOENT;
        if (file == nullptr && !missing) return platformError(error, path);
        if (missing) file = &keep(path, ProfileText({}, resolvedCodePage(0)), {});
        if (!edit(file->text) && !missing) return ERROR_SUCCESS;
        error = write(path, *file);
    } catch (const std::exception&) {
        error = ENOMEM;
    }
    if (error != 0) files_.erase(path); // What is on the disk holds.
    return platformError(error, path);
}

int ProfileStore::write(const std::string& path, File& file) {
    const auto now = Clock::now();
    const bool waits = !file.synced || now - *file.synced >= kSyncInterval;
    struct stat status {};
    const int error = replaceFile(path, file.text.bytes(),
                                  waits ? Durability::kPower : Durability::kProcess, status);
    if (error != 0) return error;
    file.stamp = Stamp::of(status);
    file.owesSync = !waits;
    if (waits) file.synced = now;
    return 0;
}

void ProfileStore::flush() {
    for (auto& [path, file] : files_) {
        if (file.owesSync) syncFile(path);
        file.owesSync = false;
    }
}

} // namespace headless
