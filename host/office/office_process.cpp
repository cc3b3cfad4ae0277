#include "office/office_process.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

/// Between fork and exec only calls that are safe there.
[[noreturn]] void become(const char* program, char* const* arguments, pid_t parent) {
    constexpr int kNotStarted = 127;
    setpgid(0, 0); // Ctrl+C is for this program, which ends the other one in its own time.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kNotStarted);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int standard = 0; standard <= 2; ++standard)
        dup2(nowhere, standard);
    close_range(3, ~0U, 0);
    execv(program, arguments);
    _exit(kNotStarted);
}

} // namespace

OfficeProcess::OfficeProcess(const std::string& program,
                             const std::vector<std::string>& arguments) {
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), program);
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const pid_t parent = getpid();
    id_ = fork();
    if (id_ == 0) become(program.c_str(), pointers.data(), parent);
    if (id_ < 0) throw WorkbookError(program + " cannot be started: " + std::strerror(errno));
}

OfficeProcess::~OfficeProcess() { kill(); }

bool OfficeProcess::runs() {
    if (id_ == -1) return false;
    int status = 0;
    if (waitpid(id_, &status, WNOHANG) != id_) return true;
    if (WIFEXITED(status)) exitCode_ = WEXITSTATUS(status);
    id_ = -1;
    return false;
}

bool OfficeProcess::endsWithin(std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (runs()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

void OfficeProcess::kill() {
    if (!runs()) return;
    ::kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
    id_ = -1;
}

} // namespace headless::excel
