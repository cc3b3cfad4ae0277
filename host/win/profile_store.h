// The settings files of a session: where they are, what was read of them, when they are written.
//
// A file is parsed once and then served from memory as long as the file system shows no change; a
// change by anybody is seen by the next call. A call costs one look at the file's status.
//
// Writing. Every change replaces the whole file under its name, so whoever reads it, and whoever
// finds it after this process was killed, has the text before or after a change. To outlive a loss
// of power as well the text has to reach the disk, for which a write waits milliseconds. The first
// change in a second waits; those that follow within that second do not, so that a thousand changes
// in a row cost no thousand waits. Their text goes to the disk with the next change that waits,
// when the session ends, when a caller flushes (three null arguments), and by the system's own
// doing in about half a minute. Two processes that change one file at the same moment each write
// all of it; the later one wins.
#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "win/profile_text.h"
#include "win/types.h"

namespace headless {

/// Parsed settings files by name. Names are the platform's, with either separator; one without a
/// folder lies in the Windows folder.
class ProfileStore {
public:
    ProfileStore() = default;
    ~ProfileStore();
    ProfileStore(const ProfileStore&) = delete;
    ProfileStore& operator=(const ProfileStore&) = delete;

    /// Where names without a folder lie. Empty for "headless" in the user's folder of
    /// configuration, which is made when a file in it is written.
    std::string windowsFolder;

    /// The text of a file, valid until the next call; null with the platform's error number when it
    /// cannot be read.
    const ProfileText* read(std::wstring_view name, DWORD& error);

    /// Changes a file and writes it when `edit` says that it did; a missing file is written even
    /// so. Returns the platform's error number; after a failure the file is as it was.
    [[nodiscard]] DWORD change(std::wstring_view name,
                               const std::function<bool(ProfileText&)>& edit);

    /// Waits until all that was written would outlive a loss of power.
    void flush();

private:
    using Clock = std::chrono::steady_clock;

    /// What tells that a file is still the one that was read.
    struct Stamp {
        dev_t device;
        ino_t inode;
        off_t size;
        std::int64_t modified; ///< ns
        std::int64_t changed;  ///< ns; not even those who set the other back change this.
        bool settled;          ///< A change from now on would show; not part of the comparison.

        static Stamp of(const struct stat& status);
        [[nodiscard]] bool sameFile(const Stamp& other) const noexcept;
    };
    struct File {
        ProfileText text;
        Stamp stamp;
        std::optional<Clock::time_point> synced; ///< When a change of ours last reached the disk.
        bool owesSync = false;
        std::uint64_t lastUse = 0;
    };
    using Files = std::unordered_map<std::string, File>;

    [[nodiscard]] std::string pathOf(std::wstring_view name) const;
    /// The file in memory as it is on the disk; null with the system's error number.
    File* current(const std::string& path, int& error);
    File& keep(const std::string& path, ProfileText text, const Stamp& stamp);
    void forgetOldest();
    int write(const std::string& path, File& file);

    Files files_;
    std::uint64_t uses_ = 0;
};

} // namespace headless
