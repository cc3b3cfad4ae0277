#include "text/ini_file.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "text/app_path.h"
#include "win/state.h"

namespace fs = std::filesystem;

namespace {

class IniFile : public testing::Test {
protected:
    void put(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

    std::string bytes() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    headless::WinState state_;
    test_support::TemporaryFolder folder_;
    const fs::path path_ = folder_.path() / "settings.ini";
    CIniFile file_{path_.wstring().c_str()};
};

TEST_F(IniFile, ReadsNumbersAsTheRunTimeDoes) {
    const struct {
        const char* text;
        int number;
        unsigned char byte;
        bool flag;
        double real;
    } cases[] = {
        {"12abc", 12, 12, false, 12.0},
        {"abc", 0, 0, false, 0.0},
        {"1", 1, 1, true, 1.0},
        {"01", 1, 1, true, 1.0},
        {"2", 2, 2, false, 2.0},
        {"true", 0, 0, false, 0.0},
        {"257", 257, 1, false, 257.0},
        {"-1", -1, 255, false, -1.0},
        {" \"3.75\" ", 3, 3, false, 3.75},
        {"-2.5e3 mm", -2, 254, false, -2500.0},
        {"1,5", 1, 1, true, 1.0},
        {"", 0, 0, false, 0.0},
        {"99999999999", 2147483647, 255, false, 99999999999.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        put(std::string("[s]\r\nk=") + c.text + "\r\n");
        int number = -7;
        unsigned char byte = 77;
        bool flag = !c.flag;
        double real = -7;
        EXPECT_TRUE(file_.GetValueOfKey(L"s", L"k", number));
        EXPECT_TRUE(file_.GetValueOfKey(L"S", L"K", byte));
        EXPECT_TRUE(file_.GetValueOfKey(L"s", L"k", flag));
        EXPECT_TRUE(file_.GetValueOfKey(L"s", L"k", real));
        EXPECT_EQ(number, c.number);
        EXPECT_EQ(byte, c.byte);
        EXPECT_EQ(flag, c.flag);
        EXPECT_EQ(real, c.real);
    }
}

TEST_F(IniFile, LeavesTheValueAloneWhenThereIsNone) {
    put("[s]\r\nabsent=NotExist\r\nquoted=\"NotExist\"\r\nother=notexist\r\n");
    for (const wchar_t* key : {L"none", L"absent", L"quoted"}) {
        CString text = L"old";
        int number = 5;
        EXPECT_FALSE(file_.GetValueOfKey(L"s", key, text, 100));
        EXPECT_FALSE(file_.GetValueOfKey(L"s", key, number));
        EXPECT_EQ(text, L"old");
        EXPECT_EQ(number, 5);
    }
    CString text;
    EXPECT_TRUE(file_.GetValueOfKey(L"s", L"other", text, 100));
    EXPECT_EQ(text, L"notexist");
    bool flag = true;
    EXPECT_FALSE(CIniFile(L"/none/at/all.ini").GetValueOfKey(L"s", L"k", flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(state_.messageBoxes.empty());
}

TEST_F(IniFile, ReadsAsMuchAsTheBufferHolds) {
    const std::wstring stored(70'000, L'x');
    ASSERT_TRUE(file_.SetValueOfKey(L"s", L"k", stored.c_str()));
    CString text;
    for (const int room : {1, 2, 9, 1023, 1024, 1025, 16'384, 69'999, 70'001, 10'000'000}) {
        EXPECT_TRUE(file_.GetValueOfKey(L"s", L"k", text, room));
        EXPECT_EQ(text.GetLength(), std::min(room - 1, 70'000));
    }
    EXPECT_TRUE(file_.GetValueOfKey(L"s", L"none", text, 8));
    EXPECT_EQ(text, L"NotExis") << "a cut word no longer tells that the key is missing";
    EXPECT_TRUE(file_.GetValueOfKey(L"s", L"k", text, 0));
    EXPECT_TRUE(text.IsEmpty());
}

TEST_F(IniFile, WritesNumbersInTheirFormats) {
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"text", L"板 1"));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"int", -12));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"byte", static_cast<unsigned char>(200)));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"on", true));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"off", false));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"whole", 2.5, 0));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"real", 2.5, 2));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"half", -0.125, 2));
    EXPECT_TRUE(file_.SetValueOfKey(L"s", L"gone", 1));
    EXPECT_TRUE(file_.DeleteKey(L"s", L"gone"));
    EXPECT_TRUE(file_.SetValueOfKey(L"long", L"real", -1.7976931348623157e308, 5000));
    CString text;
    EXPECT_TRUE(file_.GetValueOfKey(L"long", L"real", text, 5000));
    EXPECT_EQ(text.GetLength(), 1 + 309 + 1 + 1074) << "no more decimals than a number has";
    EXPECT_TRUE(file_.DeleteKey(L"long", nullptr));
    const CIniFile copy = file_;
    double real = 0;
    EXPECT_TRUE(copy.GetValueOfKey(L"s", L"real", real));
    EXPECT_EQ(real, 2.5);
    EXPECT_EQ(bytes(), "[s]\r\ntext=\xB0\xE5 1\r\nint=-12\r\nbyte=200\r\non=1\r\noff=0\r\n"
                       "whole=2\r\nreal=2.50\r\nhalf=-0.12\r\n");
}

TEST_F(IniFile, TellsTheUserOfAMissingFileName) {
    CIniFile nameless(L"");
    EXPECT_FALSE(nameless.SetValueOfKey(L"s", L"k", L"v"));
    EXPECT_FALSE(nameless.SetValueOfKey(L"s", L"k", 1));
    EXPECT_FALSE(nameless.SetValueOfKey(L"s", L"k", static_cast<unsigned char>(1)));
    EXPECT_FALSE(nameless.SetValueOfKey(L"s", L"k", true));
    EXPECT_FALSE(nameless.SetValueOfKey(L"s", L"k", 1.0, 2));
    EXPECT_FALSE(nameless.DeleteKey(L"s", L"k"));
    ASSERT_EQ(state_.messageBoxes.size(), 6U);
    for (const headless::MessageBoxRecord& box : state_.messageBoxes)
        EXPECT_EQ(box.text, L"在调用函数SetValueOfKey时，m_strFile未被赋值，异常退出！");
    int number = 5;
    EXPECT_FALSE(nameless.GetValueOfKey(L"s", L"k", number));
    EXPECT_FALSE(CIniFile(L"/none/at/all.ini").SetValueOfKey(L"s", L"k", 1));
    EXPECT_EQ(state_.messageBoxes.size(), 6U) << "other failures and readers stay quiet";
}

TEST(AppPath, IsTheParentOfTheModulesFolder) {
    const headless::WinState state;
    const fs::path program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(GetAppPath(), program.parent_path().parent_path().wstring().c_str());

    // Any shared object will do for the module; this one needs nothing but the C library.
    Dl_info library{};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "cbrt"), &library), 0);
    const test_support::TemporaryFolder product;
    fs::create_directory(product.path() / "bin");
    const fs::path module = product.path() / "bin" / "OrnBoard.arx";
    fs::copy_file(library.dli_fname, module);
    ASSERT_NE(LoadLibraryW(module.wstring().c_str()), nullptr);
    EXPECT_EQ(GetAppPath(), product.path().wstring().c_str());
}

} // namespace
