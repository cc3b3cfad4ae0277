// A program that runs beside this one and ends with it at the latest.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

namespace headless::excel {

struct OfficeStart {
    std::string program;
    std::vector<std::string> arguments;
    std::string temporaryFolder; ///< For files that it makes for itself.
    int held = -1;               ///< The only open file of this process that it gets.
};

class OfficeProcess {
public:
    /// Starts the program, its input and output leading nowhere: it must not keep the pipes of
    /// whoever called this program open. The system ends it should this process die.
    /// Throws WorkbookError when it cannot be started.
    explicit OfficeProcess(const OfficeStart& start);
    /// Ends what still runs.
    ~OfficeProcess();
    OfficeProcess(const OfficeProcess&) = delete;
    OfficeProcess& operator=(const OfficeProcess&) = delete;

    [[nodiscard]] bool runs();
    /// Waits for its end; false when it takes longer.
    [[nodiscard]] bool endsWithin(std::chrono::milliseconds limit);
    /// Ends it at once.
    void kill();
    /// What it ended with; -1 while it runs and when a signal ended it.
    [[nodiscard]] int exitCode() const { return exitCode_; }
    /// The files of the sockets at which it can be reached; they stay when it is ended.
    [[nodiscard]] std::vector<std::string> socketFiles() const;

private:
    pid_t id_ = -1; ///< -1 once it has ended.
    int exitCode_ = -1;
};

} // namespace headless::excel
