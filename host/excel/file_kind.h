// The kinds of workbook files.
#pragma once

#include <optional>
#include <string>

namespace headless::excel {

enum class FileKind {
    kXlsx, ///< Office Open XML, since 2007.
    kXls,  ///< The binary kind of 97 to 2003.
    kOds,  ///< OpenDocument.
};

/// ".xlsx" and so on.
[[nodiscard]] const char* endingOf(FileKind kind);
/// By the path's ending, in any case.
[[nodiscard]] std::optional<FileKind> kindOfEnding(const std::string& path);
/// By the number that automation gives it, such as 51 for .xlsx.
[[nodiscard]] std::optional<FileKind> kindOfFormat(long format);
/// The number for it.
[[nodiscard]] long formatOf(FileKind kind);

/// What the file is, by its first bytes.
/// Throws WorkbookError, with what is wrong, when it cannot be read, is none of them or is
/// protected by a password.
[[nodiscard]] FileKind kindOfContent(const std::string& path);

} // namespace headless::excel
