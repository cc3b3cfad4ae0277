// Replacing a file as a whole, so that a crash leaves the old contents or the new, never a mixture.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace headless {

/// What the new contents outlive once they are in place. A file that was there stays whole in
/// either case until the new one takes its name; only a file system that orders names before
/// contents could lose it with kProcess, when the power fails.
enum class Durability {
    kProcess, ///< The process, however it ends: the system has the bytes.
    kPower,   ///< A loss of power: the disk has the bytes, for which the call waits.
};

/// A file written piece by piece beside the target, which it replaces at the end: the target keeps
/// its permissions, its owner where that is allowed, and the links that lead to it. A file without
/// any permission to write is refused even to those whom the system would let write.
///
/// Until the end the new file has no name, so nothing is left of it however the process ends. Where
/// the file system knows no files without names it is ".headless-<process>-<number>", which a
/// process that is killed leaves behind.
class FileReplacement {
public:
    explicit FileReplacement(const std::string& path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// 0, or the error number of what failed first; nothing more is done from then on.
    [[nodiscard]] int error() const noexcept { return error_; }
    void write(std::string_view bytes);
    /// Puts the file in the target's place. Without it, or when it fails, the old file stays as it
    /// was.
    ///
    /// @param status  what the file system says of the new file.
    /// @return        0 or the error number.
    [[nodiscard]] int commit(Durability durability, struct stat& status);

private:
    void open();
    void startStoring(std::size_t written);
    [[nodiscard]] bool giveName();
    [[nodiscard]] bool renameOver();
    [[nodiscard]] bool putInPlace(Durability durability, struct stat& status);

    std::string target_;
    std::string path_; // of the new file; empty while it has no name
    struct stat old_ {};
    bool exists_ = false; // the target
    int descriptor_ = -1;
    int error_ = 0;
    std::size_t notBegun_ = 0; // bytes written that the disk has not been asked to store
};

/// Replaces a file by these bytes, see FileReplacement. Returns 0 or the error number.
[[nodiscard]] int replaceFile(const std::string& path, std::string_view bytes,
                              Durability durability, struct stat& status);

/// Makes what is in the file now outlive a loss of power. Returns 0 or the error number.
int syncFile(const std::string& path);

} // namespace headless
