// What becomes of the files: refusals, places, changes by others, crashes.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <windows.h>

#include "profile_fixture.h"

namespace fs = std::filesystem;
using test_support::kDefault;

namespace {

class ProfileFiles : public test_support::ProfileTest {};

TEST_F(ProfileFiles, TellsWhatIsWrong) {
    const auto read = [](const fs::path& file) {
        wchar_t text[16];
        SetLastError(777);
        GetPrivateProfileStringW(L"s", L"k", kDefault, text, 16, file.wstring().c_str());
        EXPECT_EQ(std::wstring(text), kDefault);
        return GetLastError();
    };
    const auto failedWrite = [](const fs::path& file) {
        EXPECT_FALSE(WritePrivateProfileStringW(L"s", L"k", L"w", file.wstring().c_str()));
        return GetLastError();
    };
    put("[s]\r\nj=v\r\n");
    fs::create_directory(path("folder"));
    EXPECT_EQ(read(path()), ERROR_SUCCESS) << "a missing key is no failure";
    EXPECT_EQ(read(path("none.ini")), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(read(path("none") / "a.ini"), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(read(path("folder")), ERROR_ACCESS_DENIED);
    EXPECT_EQ(read("/dev/zero"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(failedWrite(path("none") / "a.ini"), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(failedWrite(path("folder")), ERROR_ACCESS_DENIED);
    EXPECT_EQ(failedWrite("/dev/null"), ERROR_ACCESS_DENIED);
    fs::permissions(path(), fs::perms::owner_read);
    EXPECT_EQ(failedWrite(path()), ERROR_ACCESS_DENIED) << "read-only, even to an administrator";
    EXPECT_EQ(get(L"s", L"k"), kDefault) << "what was not written is not read";

    EXPECT_FALSE(write(nullptr, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS) << "a flush answers FALSE";
    EXPECT_FALSE(write(nullptr, L"k", L"v"));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(WritePrivateProfileSectionW(nullptr, L"", path().wstring().c_str()));
}

TEST_F(ProfileFiles, FindsFilesWithoutAFolder) {
    state_.profiles.windowsFolder = path("windows").string();
    EXPECT_TRUE(WritePrivateProfileStringW(L"s", L"k", L"v", L"bare.ini"));
    EXPECT_TRUE(fs::exists(path("windows") / "bare.ini"));
    EXPECT_TRUE(WritePrivateProfileStringW(L"s", L"k", L"w", nullptr));
    EXPECT_TRUE(fs::exists(path("windows") / "win.ini"));

    const fs::path before = fs::current_path();
    fs::current_path(folder_.path());
    EXPECT_TRUE(WritePrivateProfileStringW(L"s", L"k", L"v", L".\\dot.ini"));
    EXPECT_TRUE(WritePrivateProfileStringW(L"s", L"gone", nullptr, L".\\new.ini"));
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(path("dot.ini")));
    EXPECT_EQ(fs::file_size(path("new.ini")), 0U) << "deleting makes a missing file";

    std::wstring name = path("dot.ini").wstring();
    std::replace(name.begin(), name.end(), L'/', L'\\');
    EXPECT_EQ(GetPrivateProfileIntW(L"s", L"none", 5, name.c_str()), 5U);
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS) << "either separator";
}

TEST_F(ProfileFiles, SeesChangesOfOthersAtOnce) {
    // Both within one tick of the file system's clock and long after it.
    for (const int pause : {0, 40}) {
        put("[s]\r\nk=1\r\n");
        std::this_thread::sleep_for(std::chrono::milliseconds(pause));
        EXPECT_EQ(get(L"s", L"k"), L"1");
        const fs::file_time_type time = fs::last_write_time(path());
        put("[s]\r\nk=2\r\n");
        fs::last_write_time(path(), time);
        EXPECT_EQ(get(L"s", L"k"), L"2") << "same size, file and time";

        std::this_thread::sleep_for(std::chrono::milliseconds(pause));
        EXPECT_TRUE(write(L"s", L"j", L"3"));
        std::this_thread::sleep_for(std::chrono::milliseconds(pause));
        put("[s]\r\nk=4\r\nj=3\r\n");
        EXPECT_TRUE(write(L"s", L"j", L"5"));
        EXPECT_EQ(bytes(), "[s]\r\nk=4\r\nj=5\r\n") << "another's change is not undone";
        fs::remove(path());
        EXPECT_EQ(get(L"s", L"k"), kDefault);
    }
}

TEST_F(ProfileFiles, KeepsWhatTheFileIs) {
    put("[s]\r\nk=v\r\n");
    fs::permissions(path(), static_cast<fs::perms>(0640));
    fs::create_symlink("a.ini", path("link.ini"));
    const auto inode = [this] {
        struct stat status {};
        ::stat(path().c_str(), &status);
        return status.st_ino;
    };
    const auto before = inode();
    EXPECT_TRUE(write(L"s", L"k", L" v"));
    EXPECT_TRUE(write(L"t", nullptr, nullptr));
    EXPECT_EQ(inode(), before) << "nothing to write, nothing written";

    const std::wstring link = path("link.ini").wstring();
    EXPECT_TRUE(WritePrivateProfileStringW(L"s", L"k", L"w", link.c_str()));
    EXPECT_TRUE(fs::is_symlink(path("link.ini")));
    EXPECT_EQ(bytes(), "[s]\r\nk=w\r\n");
    EXPECT_EQ(fs::status(path()).permissions(), static_cast<fs::perms>(0640));
    EXPECT_EQ(filesInFolder(), 2U) << "nothing is left beside";
}

TEST_F(ProfileFiles, AFullDiskLeavesTheOldFile) {
    put("[s]\r\nk=v\r\n");
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const rlimit small{8, old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const BOOL written = write(L"s", L"k", L"longer");
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(written);
    EXPECT_EQ(bytes(), "[s]\r\nk=v\r\n");
    EXPECT_EQ(get(L"s", L"k"), L"v");
    EXPECT_EQ(filesInFolder(), 1U);
}

TEST_F(ProfileFiles, AKilledProcessLeavesAWholeFile) {
    const std::string head = "[s]\r\n; " + std::string(100'000, 'x') + "\r\nk=";
    put(head + "0\r\n");
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        for (int i = 0; child == 0; ++i)
            write(L"s", L"k", std::to_wstring(i % 10).c_str());
        std::this_thread::sleep_for(std::chrono::microseconds(2000 + 700 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string now = bytes();
        ASSERT_EQ(now.size(), head.size() + 3);
        ASSERT_EQ(now.compare(0, head.size(), head), 0);
    }
}

} // namespace
