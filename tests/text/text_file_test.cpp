#include "text/text_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "win/state.h"

namespace {

class TextFile : public testing::Test {
protected:
    CString path(const char* name) const { return (folder_.path() / name).wstring().c_str(); }

    std::string bytes(const char* name) const {
        std::ifstream file(folder_.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void put(const char* name, const std::string& bytes) const {
        std::ofstream(folder_.path() / name, std::ios::binary) << bytes;
    }

    headless::WinState state_;
    test_support::TemporaryFolder folder_;
};

TEST_F(TextFile, IsWrittenInTheCodePageWithCrLf) {
    EXPECT_TRUE(String::WriteStringToFile(path("a.txt"), L"板\nb\n"));
    EXPECT_EQ(bytes("a.txt"), "\xB0\xE5\r\nb\r\n");
    state_.ansiCodePage = 1252;
    EXPECT_TRUE(String::WriteStringToFile(path("a.txt"), L"é"));
    EXPECT_EQ(bytes("a.txt"), "\xE9") << "the old contents are gone";
}

TEST_F(TextFile, LinesAreReadAsOneRun) {
    put("two.txt", "ab\r\ncd\r\n");
    EXPECT_EQ(String::ReadFile(path("two.txt")), L"abcd");
    put("unended.txt", "ab\n\n\xD6\xD0");
    EXPECT_EQ(String::ReadFile(path("unended.txt")), L"ab中");
    put("empty.txt", "");
    EXPECT_TRUE(String::ReadFile(path("empty.txt")).IsEmpty());
}

TEST_F(TextFile, MissingPlacesAreAnswered) {
    EXPECT_TRUE(String::ReadFile(path("none.txt")).IsEmpty());
    EXPECT_FALSE(String::WriteStringToFile(path("none/a.txt"), L"x"));
    EXPECT_FALSE(String::WriteStringToFile(path(""), L"x")) << "a folder is no file";
}

TEST_F(TextFile, AFullDiskIsAFailedWrite) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
    EXPECT_FALSE(String::WriteStringToFile(L"/dev/full", L"x"));
}

} // namespace
