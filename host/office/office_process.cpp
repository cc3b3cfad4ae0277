#include "office/office_process.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

namespace fs = std::filesystem;

/// Texts as calls of the system take them.
class TextList {
public:
    explicit TextList(std::vector<std::string> texts) : texts_(std::move(texts)) {
        for (std::string& text : texts_)
            pointers_.push_back(text.data());
        pointers_.push_back(nullptr);
    }
    [[nodiscard]] char* const* get() const { return pointers_.data(); }

private:
    std::vector<std::string> texts_;
    std::vector<char*> pointers_;
};

TextList argumentsOf(const OfficeStart& start) {
    std::vector<std::string> texts = start.arguments;
    texts.insert(texts.begin(), start.program);
    return TextList(std::move(texts));
}

TextList environmentOf(const OfficeStart& start) {
    std::vector<std::string> texts;
    for (char** entry = environ; *entry != nullptr; ++entry)
        texts.emplace_back(*entry);
    for (const char* name : {"TEMP=", "TMP=", "TMPDIR="}) {
        std::erase_if(texts, [&](const std::string& text) { return text.starts_with(name); });
        texts.push_back(name + start.temporaryFolder);
    }
    return TextList(std::move(texts));
}

/// Between fork and exec only calls that are safe there.
[[noreturn]] void become(char* const* arguments, char* const* environment, int held, pid_t parent) {
    constexpr int kNotStarted = 127;
    constexpr int kFirst = 3; // behind the standard ones
    setpgid(0, 0); // Ctrl+C is for this program, which ends the other one in its own time.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kNotStarted);
    if (held == kFirst)
        fcntl(held, F_SETFD, 0);
    else
        dup2(held, kFirst);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int standard = 0; standard < kFirst; ++standard)
        dup2(nowhere, standard);
    close_range(kFirst + 1, ~0U, 0);
    execve(arguments[0], arguments, environment);
    _exit(kNotStarted);
}

/// The numbers of the sockets that a process has open.
std::set<std::string> socketsOf(pid_t id) {
    std::set<std::string> sockets;
    std::error_code ignored;
    for (const auto& entry :
         fs::directory_iterator("/proc/" + std::to_string(id) + "/fd", ignored)) {
        const std::string target = fs::read_symlink(entry.path(), ignored).string();
        constexpr std::string_view kSocket = "socket:[";
        if (target.starts_with(kSocket))
            sockets.insert(target.substr(kSocket.size(), target.size() - kSocket.size() - 1));
    }
    return sockets;
}

} // namespace

OfficeProcess::OfficeProcess(const OfficeStart& start) {
    const TextList arguments = argumentsOf(start);
    const TextList environment = environmentOf(start);
    const pid_t parent = getpid();
    id_ = fork();
    if (id_ == 0) become(arguments.get(), environment.get(), start.held, parent);
    if (id_ < 0) throw WorkbookError(start.program + " cannot be started: " + std::strerror(errno));
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

std::vector<std::string> OfficeProcess::socketFiles() const {
    const std::set<std::string> sockets = socketsOf(id_);
    std::vector<std::string> files;
    std::ifstream table("/proc/net/unix");
    for (std::string line; std::getline(table, line);) {
        // Address, three numbers, kind, state, number, file.
        std::istringstream fields(line);
        std::string field;
        for (int i = 0; i < 7; ++i)
            fields >> field;
        std::string file;
        if (sockets.contains(field) && fields >> file) files.push_back(file);
    }
    return files;
}

} // namespace headless::excel
