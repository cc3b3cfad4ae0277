#include "text/ini_file.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <vector>

namespace {

constexpr wchar_t kMissing[] = L"NotExist";
constexpr int kLongestText = 10'000'000;

/// What one call with room for `capacity` characters reads. Texts are short as a rule, so the room
/// grows only when it was filled, and a short text costs no large buffer.
CString readText(wchar_t const* section, wchar_t const* key, int capacity, CString const& file) {
    constexpr int kUsualText = 1024;
    constexpr int kGrowth = 16;
    wchar_t usual[kUsualText];
    int room = std::clamp(capacity, 1, kUsualText);
    DWORD length = GetPrivateProfileStringW(section, key, kMissing, usual, room, file);
    std::vector<wchar_t> large;
    // A list of names is cut one character earlier than a value.
    while (room < capacity && static_cast<int>(length) >= room - 2) {
        room = room < capacity / kGrowth ? room * kGrowth : capacity;
        large.resize(room);
        length = GetPrivateProfileStringW(section, key, kMissing, large.data(), room, file);
    }
    return large.empty() ? usual : large.data();
}

/// What "%0.Nf" gives for N decimals with exact halves going to the even digit. Run times differ in
/// that, and in the decimal point, but the text of a setting must not.
CString fixedText(double value, int decimals) {
    constexpr int kMostWholeDigits = 309;
    constexpr int kMostDecimals = 1074; // All that a double can have.
    char digits[kMostWholeDigits + kMostDecimals + 3];
    char* const end = std::to_chars(std::begin(digits), std::end(digits), value,
                                    std::chars_format::fixed, (std::min)(decimals, kMostDecimals))
                          .ptr;
    return CString(digits, static_cast<int>(end - digits));
}

} // namespace

CIniFile::CIniFile(wchar_t const* file) : m_strFile(file) {}

bool CIniFile::GetValueOfKey(wchar_t const* section, wchar_t const* key, CString& value,
                             int bufferLength) const {
    const CString text = readText(section, key, bufferLength, m_strFile);
    if (text == kMissing) return false;
    value = text;
    return true;
}

bool CIniFile::GetValueOfKey(wchar_t const* section, wchar_t const* key, int& value) const {
    CString text;
    if (!GetValueOfKey(section, key, text, kLongestText)) return false;
    value = _wtoi(text);
    return true;
}

bool CIniFile::GetValueOfKey(wchar_t const* section, wchar_t const* key,
                             unsigned char& value) const {
    int number = 0;
    if (!GetValueOfKey(section, key, number)) return false;
    value = static_cast<unsigned char>(number);
    return true;
}

bool CIniFile::GetValueOfKey(wchar_t const* section, wchar_t const* key, bool& value) const {
    int number = 0;
    if (!GetValueOfKey(section, key, number)) return false;
    value = number == 1;
    return true;
}

bool CIniFile::GetValueOfKey(wchar_t const* section, wchar_t const* key, double& value) const {
    CString text;
    if (!GetValueOfKey(section, key, text, kLongestText)) return false;
    value = _wtof(text);
    return true;
}

bool CIniFile::SetValueOfKey(wchar_t const* section, wchar_t const* key, wchar_t const* value) {
    return write(section, key, value);
}

bool CIniFile::SetValueOfKey(wchar_t const* section, wchar_t const* key, int value) {
    CString text;
    text.Format(L"%d", value);
    return write(section, key, text);
}

bool CIniFile::SetValueOfKey(wchar_t const* section, wchar_t const* key, unsigned char value) {
    CString text;
    text.Format(L"%u", static_cast<unsigned>(value));
    return write(section, key, text);
}

bool CIniFile::SetValueOfKey(wchar_t const* section, wchar_t const* key, bool value) {
    return SetValueOfKey(section, key, value ? 1 : 0);
}

bool CIniFile::SetValueOfKey(wchar_t const* section, wchar_t const* key, double value,
                             int decimals) {
    return write(section, key, fixedText(value, decimals));
}

bool CIniFile::DeleteKey(wchar_t const* section, wchar_t const* key) {
    return write(section, key, nullptr);
}

/// Writes a text, or removes the key for a null one. The message names SetValueOfKey for DeleteKey
/// too: users know it in these words.
bool CIniFile::write(wchar_t const* section, wchar_t const* key, wchar_t const* text) {
    if (m_strFile.IsEmpty()) {
        AfxMessageBox(L"在调用函数SetValueOfKey时，m_strFile未被赋值，异常退出！");
        return false;
    }
    return WritePrivateProfileStringW(section, key, text, m_strFile) != FALSE;
}
