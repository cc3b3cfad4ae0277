// The base of tests of settings files: a session, a folder and the file a.ini in it.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include <windows.h>

#include "support/temporary_folder.h"
#include "win/state.h"

namespace test_support {

inline constexpr wchar_t kDefault[] = L"<def>";

class ProfileTest : public testing::Test {
protected:
    std::filesystem::path path(const char* name = "a.ini") const { return folder_.path() / name; }

    void put(const std::string& bytes) const { std::ofstream(path(), std::ios::binary) << bytes; }

    std::string bytes() const {
        std::ifstream file(path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// A value or, for a null key or section, a list with '|' after each text.
    std::wstring get(const wchar_t* section, const wchar_t* key,
                     const wchar_t* defaultText = kDefault) const {
        wchar_t text[256];
        const DWORD length = GetPrivateProfileStringW(section, key, defaultText, text, 256,
                                                      path().wstring().c_str());
        return shown({text, length});
    }

    std::wstring lines(const wchar_t* section) const {
        wchar_t text[256];
        const DWORD length =
            GetPrivateProfileSectionW(section, text, 256, path().wstring().c_str());
        return shown({text, length});
    }

    BOOL write(const wchar_t* section, const wchar_t* key, const wchar_t* value) const {
        return WritePrivateProfileStringW(section, key, value, path().wstring().c_str());
    }

    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_.path()),
                          std::filesystem::directory_iterator()));
    }

    static std::wstring shown(std::wstring text) {
        std::replace(text.begin(), text.end(), L'\0', L'|');
        return text;
    }

    headless::WinState state_;
    test_support::TemporaryFolder folder_;
};

} // namespace test_support
