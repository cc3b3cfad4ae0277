#include "excel/file_kind.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "excel/workbook_error.h"

namespace headless::excel {
namespace {

struct Kind {
    FileKind kind;
    const char* ending;
    long format;
};

/// The first of each kind is how it is told.
constexpr Kind kKinds[] = {
    {FileKind::kXlsx, ".xlsx", 51},  {FileKind::kXls, ".xls", 56},
    {FileKind::kOds, ".ods", 60},    {FileKind::kXls, ".xls", 43}, // xlExcel9795
    {FileKind::kXls, ".xls", -4143},                               // xlWorkbookNormal
};

const Kind& entryOf(FileKind kind) { return *std::ranges::find(kKinds, kind, &Kind::kind); }

/// The stream that a protected file keeps its contents in, as the folder of the file lists it.
bool hidesContents(const std::string& path) {
    const std::string stream("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32);
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    return bytes.find(stream) != std::string::npos;
}

} // namespace

const char* endingOf(FileKind kind) { return entryOf(kind).ending; }

long formatOf(FileKind kind) { return entryOf(kind).format; }

std::optional<FileKind> kindOfEnding(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::ranges::transform(ending, ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    });
    const auto found = std::ranges::find(kKinds, ending, &Kind::ending);
    return found == std::end(kKinds) ? std::nullopt : std::optional(found->kind);
}

std::optional<FileKind> kindOfFormat(long format) {
    const auto found = std::ranges::find(kKinds, format, &Kind::format);
    return found == std::end(kKinds) ? std::nullopt : std::optional(found->kind);
}

FileKind kindOfContent(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) throw WorkbookError("it is a folder");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw WorkbookError(std::strerror(errno));
    std::string start(128, '\0');
    file.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(file.gcount()));
    if (start.starts_with("\xD0\xCF\x11\xE0")) {
        if (hidesContents(path)) throw WorkbookError("it is protected by a password");
        return FileKind::kXls;
    }
    if (!start.starts_with("PK")) throw WorkbookError("it is not a workbook");
    // The archive starts with the name of what it holds.
    const std::string_view mark = "mimetypeapplication/vnd.oasis.opendocument.spreadsheet";
    return start.find(mark) != std::string::npos ? FileKind::kOds : FileKind::kXlsx;
}

} // namespace headless::excel
