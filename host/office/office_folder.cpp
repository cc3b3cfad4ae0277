#include "office/office_folder.h"

#include <filesystem>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

namespace fs = std::filesystem;

/// Reads names until nobody is left to write any, then removes what they name and its arguments.
constexpr const char* kRemove =
    "while IFS= read -r file; do set -- \"$@\" \"$file\"; done; rm -rf -- \"$@\"";

/// @param names  the end of a pipe that it reads from.
pid_t startRemover(std::string& folder, int names) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, names, STDIN_FILENO);
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&files, standard, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // Ctrl+C is not for it.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    std::string words[] = {"sh", "-c", kRemove, "sh"};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(),
                         words[3].data(), folder.data(),   nullptr};
    pid_t id = -1;
    const int error = posix_spawn(&id, "/bin/sh", &files, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error == 0 ? id : -1;
}

} // namespace

OfficeFolder::OfficeFolder() : path_((fs::temp_directory_path() / "orn-office-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr)
        throw WorkbookError("no temporary folder can be made for LibreOffice");
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) == 0) {
        remover_ = startRemover(path_, ends[0]);
        close(ends[0]);
        held_ = ends[1];
    }
    if (remover_ != -1) return;
    if (held_ != -1) close(held_);
    rmdir(path_.c_str());
    throw WorkbookError("too many files or processes are open to start LibreOffice");
}

OfficeFolder::~OfficeFolder() {
    close(held_);
    waitpid(remover_, nullptr, 0);
}

void OfficeFolder::add(const std::string& file) const {
    const std::string line = file + "\n";
    // A pipe with nobody at its other end would end this process; the remover outlives it.
    if (write(held_, line.data(), line.size()) < 0)
        throw WorkbookError("what LibreOffice leaves behind cannot be noted");
}

} // namespace headless::excel
