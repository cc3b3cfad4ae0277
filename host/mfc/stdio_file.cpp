#include <algorithm>

#include "mfc/file.h"
#include "win/code_page.h"
#include "win/code_page_calls.h"

namespace {

constexpr int kCtrlZ = 0x1A;

void appendUnit(std::string& bytes, unsigned unit) {
    bytes.push_back(static_cast<char>(unit & 0xFFU));
    bytes.push_back(static_cast<char>(unit >> 8 & 0xFFU));
}

/// The text as UTF-16 units, low bytes first.
std::string unitsOf(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t character : text) {
        const auto value = static_cast<std::uint32_t>(character);
        if (value > 0xFFFF) {
            appendUnit(bytes, 0xD7C0U + (value >> 10));
            appendUnit(bytes, 0xDC00U | (value & 0x3FFU));
        } else {
            appendUnit(bytes, value);
        }
    }
    return bytes;
}

std::wstring textOfUnits(std::string_view bytes) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto unit = static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]) |
                                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
        const bool isSecond = (unit & 0xFC00U) == 0xDC00U && !text.empty() &&
                              (static_cast<std::uint32_t>(text.back()) & 0xFFFFFC00U) == 0xD800U;
        if (isSecond) {
            const auto first = static_cast<std::uint32_t>(text.back()) & 0x3FFU;
            text.back() = static_cast<wchar_t>(0x10000U + (first << 10) + (unit & 0x3FFU));
        } else {
            text.push_back(static_cast<wchar_t>(unit));
        }
    }
    return text;
}

} // namespace

CStdioFile::CStdioFile(LPCTSTR path, UINT flags)
    : CFile(path, flags), isBinary_((flags & typeBinary) != 0) {}

BOOL CStdioFile::Open(LPCTSTR path, UINT flags, CFileException* error) {
    isBinary_ = (flags & typeBinary) != 0;
    pending_.clear();
    return CFile::Open(path, flags, error);
}

ULONGLONG CStdioFile::Seek(LONGLONG offset, UINT from) {
    pending_.clear();
    return CFile::Seek(offset, from);
}

std::string CStdioFile::nextLineBytes() {
    std::FILE* const from = stream();
    std::string bytes;
    for (int byte = std::getc(from); byte != EOF; byte = std::getc(from)) {
        if (!isBinary_ && byte == kCtrlZ) {
            std::ungetc(byte, from);
            break;
        }
        bytes.push_back(static_cast<char>(byte));
        if (isBinary_) {
            const std::size_t size = bytes.size();
            if (size % 2 == 0 && bytes[size - 2] == '\n' && bytes[size - 1] == 0) break;
        } else if (byte == '\n') {
            if (bytes.ends_with("\r\n")) bytes.erase(bytes.size() - 2, 1);
            break;
        }
    }
    if (std::ferror(from) != 0) fail();
    return bytes;
}

std::wstring CStdioFile::nextLine() {
    if (!pending_.empty()) return std::exchange(pending_, {});
    const std::string bytes = nextLineBytes();
    return isBinary_ ? textOfUnits(bytes) : headless::decode(bytes, CP_ACP);
}

BOOL CStdioFile::ReadString(CString& line) {
    std::wstring text = nextLine();
    const bool found = !text.empty();
    if (text.ends_with(L'\n')) text.pop_back();
    line.SetString(text.data(), static_cast<int>(text.size()));
    return found ? TRUE : FALSE;
}

LPTSTR CStdioFile::ReadString(LPTSTR text, UINT capacity) {
    if (text == nullptr || capacity == 0) AfxThrowInvalidArgException();
    const std::wstring line = nextLine();
    if (line.empty()) return nullptr;
    const std::size_t length = std::min<std::size_t>(line.size(), capacity - 1);
    pending_ = line.substr(length);
    std::copy_n(line.begin(), length, text);
    text[length] = 0;
    return text;
}

void CStdioFile::WriteString(LPCTSTR text) {
    if (text == nullptr) AfxThrowInvalidArgException();
    std::string bytes;
    if (isBinary_) {
        bytes = unitsOf(text);
    } else {
        for (const char byte : headless::encode(text, CP_ACP)) {
            if (byte == '\n') bytes.push_back('\r');
            bytes.push_back(byte);
        }
    }
    Write(bytes.data(), static_cast<UINT>(bytes.size()));
}
