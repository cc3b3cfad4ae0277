// A folder for the office and this process to share, and whatever else goes with it.
#pragma once

#include <string>

#include <sys/types.h>

namespace headless::excel {

/// Everything is gone once neither this process nor the office is there any more, however they
/// ended: a small process beside them sees to it, for which a pipe of theirs is closed then.
class OfficeFolder {
public:
    /// Throws WorkbookError when it cannot be made.
    OfficeFolder();
    /// Waits until it is gone, for which the office must have ended.
    ~OfficeFolder();
    OfficeFolder(const OfficeFolder&) = delete;
    OfficeFolder& operator=(const OfficeFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// A file elsewhere that is to go with the folder.
    void add(const std::string& file) const;
    /// The end of the pipe that the office is to hold, too.
    [[nodiscard]] int held() const { return held_; }

private:
    std::string path_;
    int held_ = -1;
    pid_t remover_ = -1;
};

} // namespace headless::excel
