#include "OrnCore/utf8_text.h"

#include <vector>

namespace orncore {
namespace {

int widened(const std::string& bytes, DWORD flags, wchar_t* text, int capacity) {
    return MultiByteToWideChar(CP_UTF8, flags, bytes.data(), static_cast<int>(bytes.size()), text,
                               capacity);
}

} // namespace

bool isUtf8(const std::string& bytes) {
    return bytes.empty() || widened(bytes, MB_ERR_INVALID_CHARS, nullptr, 0) > 0;
}

CString fromUtf8(const std::string& bytes) {
    if (bytes.empty()) return {};
    std::vector<wchar_t> text(static_cast<std::size_t>(widened(bytes, 0, nullptr, 0)));
    const int length = widened(bytes, 0, text.data(), static_cast<int>(text.size()));
    return {text.data(), length};
}

std::string toUtf8(const CString& text) {
    if (text.IsEmpty()) return {};
    const auto narrowed = [&text](char* bytes, int capacity) {
        return WideCharToMultiByte(CP_UTF8, 0, text.GetString(), text.GetLength(), bytes, capacity,
                                   nullptr, nullptr);
    };
    std::string bytes(static_cast<std::size_t>(narrowed(nullptr, 0)), '\0');
    narrowed(bytes.data(), static_cast<int>(bytes.size()));
    return bytes;
}

} // namespace orncore
