#include "whole_file.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "OrnCore/file_path.h"

namespace fs = std::filesystem;

namespace board {
namespace {

CString problem(const CString& path, const std::error_code& error) {
    return path + L": " + CString(error.message().c_str());
}

std::error_code lastError() {
    return errno != 0 ? std::error_code(errno, std::generic_category())
                      : std::make_error_code(std::errc::io_error);
}

std::error_code write(const fs::path& path, const std::string& bytes) {
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) return lastError();
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return file ? std::error_code() : lastError();
}

/// A file that may not be written is not replaced either, though its folder would let it.
std::error_code isWritable(const fs::path& path) {
    std::error_code error;
    if (path.has_parent_path() && !fs::is_directory(path.parent_path(), error))
        return std::make_error_code(std::errc::no_such_file_or_directory);
    if (!fs::exists(path, error)) return {};
    if (fs::is_directory(path, error)) return std::make_error_code(std::errc::is_a_directory);
    const fs::perms writable =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((fs::status(path, error).permissions() & writable) == fs::perms::none)
        return std::make_error_code(std::errc::permission_denied);
    errno = 0;
    return std::ofstream(path, std::ios::binary | std::ios::app) ? std::error_code() : lastError();
}

} // namespace

CString whyNotWritten(const CString& path) {
    const std::error_code error = isWritable(orncore::filePath(path));
    return error ? problem(path, error) : CString();
}

CString writeWhole(const CString& path, const std::string& bytes) {
    if (CString refusal = whyNotWritten(path); !refusal.IsEmpty()) return refusal;
    const fs::path target = orncore::filePath(path);
    fs::path beside = target;
    beside += ".saving";
    std::error_code error = write(beside, bytes);
    if (!error) fs::rename(beside, target, error);
    if (!error) return {};
    std::error_code ignored;
    fs::remove(beside, ignored);
    return problem(path, error);
}

} // namespace board
