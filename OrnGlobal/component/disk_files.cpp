#include "component/disk_files.h"

#include <system_error>

#include "OrnCore/file_path.h"
#include "component/completed.h"
#include "text/text_file.h"

namespace fs = std::filesystem;

namespace {

fs::path diskPath(CString path) {
    path.Replace(L'\\', L'/');
    return orncore::filePath(path);
}

bool opensForWriting(const CString& path) {
    CFile file;
    return file.Open(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite) !=
           FALSE;
}

void makeFolderOf(const fs::path& file) {
    if (!file.has_parent_path()) return;
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
}

/// Moves a finished file over another, which keeps its permissions and the links to it.
void moveOver(const fs::path& finished, const fs::path& old) {
    std::error_code error;
    fs::path target = fs::canonical(old, error);
    if (!error) fs::permissions(finished, fs::status(target).permissions(), error);
    if (!error) fs::rename(finished, target, error);
    std::error_code ignored;
    if (error) fs::remove(finished, ignored);
}

} // namespace

namespace GSF {

void TouchFile(CString path) {
    // What does not complete has no name that a file can have.
    (void)component::completed([&] {
        if (!component::fileExists(path)) makeFolderOf(diskPath(path));
        opensForWriting(path);
    });
}

} // namespace GSF

namespace component {

bool fileExists(const CString& path) noexcept {
    bool exists = false;
    return completed([&] { exists = fs::exists(diskPath(path)); }) && exists;
}

void replaceText(const CString& path, const CString& text) {
    if (!opensForWriting(path)) return;
    // Written beside first: a disk that fills up on the way must not cost the old text.
    const CString beside = path + L".saving";
    if (String::WriteStringToFile(beside, text)) {
        moveOver(diskPath(beside), diskPath(path));
    } else if (fileExists(beside)) {
        std::error_code ignored;
        fs::remove(diskPath(beside), ignored);
    } else {
        String::WriteStringToFile(path, text); // The folder takes no new files.
    }
}

} // namespace component
