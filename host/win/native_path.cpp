#include "win/native_path.h"

#include <algorithm>

#include "win/code_page.h"

namespace headless {

std::string nativePath(std::wstring_view path) {
    std::string native = toUtf8(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::wstring platformPath(std::string_view path) { return fromUtf8(path); }

} // namespace headless
