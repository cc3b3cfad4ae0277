// Paths of files for the standard library.
#pragma once

#include <filesystem>
#include <string>

#include "OrnCore/utf8_text.h"

namespace orncore {

/// The standard library converts wide texts by the process's locale, which need not have the
/// letters; UTF-8 it takes as it is.
[[nodiscard]] inline std::filesystem::path filePath(const CString& path) {
    const std::string bytes = toUtf8(path);
    return std::u8string(bytes.begin(), bytes.end());
}

[[nodiscard]] inline CString textOf(const std::filesystem::path& path) {
    const std::u8string bytes = path.u8string();
    return fromUtf8(std::string(bytes.begin(), bytes.end()));
}

} // namespace orncore
