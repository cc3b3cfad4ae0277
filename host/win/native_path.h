// File names between the platform's wide form and the file system's.
#pragma once

#include <string>
#include <string_view>

namespace headless {

/// The file system's name of a file: UTF-8, with '/' for either separator.
[[nodiscard]] std::string nativePath(std::wstring_view path);

/// The platform's form of a file system's name. Bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::wstring platformPath(std::string_view path);

} // namespace headless
