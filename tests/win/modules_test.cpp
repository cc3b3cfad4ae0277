// Modules are compiled here, by the compiler that built this program, so that their dependencies
// and entry points can be what a test needs.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <windows.h>

#include "win/native_path.h"
#include "win/state.h"

namespace fs = std::filesystem;

using headless::WinState;
using std::string;

namespace {

class Modules : public testing::Test {
protected:
    Modules() {
        char pattern[] = "/tmp/modules-XXXXXX";
        folder_ = mkdtemp(pattern);
        // Modules write to a log, since they know nothing of this program.
        log_ = (folder_ / "log").string();
        setenv("MODULE_LOG", log_.c_str(), 1);
    }
    ~Modules() override { fs::remove_all(folder_); }

    /// Compiles lib<name>.so, whose entry point logs its reason and answers `result`.
    void build(const string& name, const string& links = "", int result = 1,
               const string& more = "") {
        const fs::path source = folder_ / (name + ".cpp");
        std::ofstream(source) << R"(
#include <cstdio>
#include <cstdlib>
struct HINSTANCE__;
extern "C" int DllMain(HINSTANCE__* self, unsigned reason, void*) {
    std::FILE* log = std::fopen(std::getenv("MODULE_LOG"), "a");
    std::fprintf(log, "%s%s\n", reason == 1 ? "+" : "-", ")"
                              << name << R"(");
    std::fclose(log);
    return self != nullptr && ()"
                              << result << R"();
}
extern "C" int )" << name << "() { return 42; }\n"
                              << more;
        compile(source, name, links);
    }

    /// Compiles a library without an entry point.
    void buildPlain(const string& name, const string& links) {
        const fs::path source = folder_ / (name + ".cpp");
        std::ofstream(source) << "extern \"C\" int " << name << "() { return 1; }\n";
        compile(source, name, links);
    }

    [[nodiscard]] std::wstring path(const string& fileName) const {
        return headless::platformPath((folder_ / fileName).string());
    }

    /// The calls of entry points since the last time.
    string takeLog() {
        std::ifstream file(log_);
        string all;
        for (string line; std::getline(file, line);)
            all += line + " ";
        file.close();
        fs::remove(log_);
        return all;
    }

    fs::path folder_;

private:
    void compile(const fs::path& source, const string& name, const string& links) {
        const string library = "lib" + name + ".so";
        const string command = "cd " + folder_.string() + " && c++ -shared -fPIC -O0 " +
                               source.filename().string() + " -o " + library + " -Wl,-soname," +
                               library + " -Wl,--no-as-needed -Wl,-rpath,'$ORIGIN' -L. " + links;
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }

    string log_;
};

TEST_F(Modules, AttachAndDetachInOrderOfDependency) {
    build("ground");
    buildPlain("helper", "-lground");
    build("left", "-lhelper");
    // The library that others need stands first, which is not the order to attach in.
    build("top", "-lleft -lground");

    WinState session;
    HMODULE const top = LoadLibrary(path("libtop.so").c_str());
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(takeLog(), "+ground +left +top ");

    EXPECT_EQ(LoadLibrary(path("top.dll").c_str()), top) << "the name it has at home";
    EXPECT_EQ(LoadLibrary(path("left").c_str()), GetModuleHandle(L"libleft.so"));
    EXPECT_EQ(takeLog(), "") << "already there";

    EXPECT_TRUE(FreeLibrary(top));
    EXPECT_EQ(takeLog(), "") << "a reference is left";
    EXPECT_TRUE(FreeLibrary(top));
    EXPECT_EQ(takeLog(), "-top ") << "left has a reference of its own";
    EXPECT_FALSE(FreeLibrary(top));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_TRUE(FreeLibrary(GetModuleHandle(L"left")));
    EXPECT_EQ(takeLog(), "-left -ground ");
}

TEST_F(Modules, TheSessionDetachesWhatIsLeft) {
    build("ground");
    build("top", "-lground");
    for (int round = 0; round < 2; ++round) {
        WinState session;
        EXPECT_NE(LoadLibrary(path("libtop.so").c_str()), nullptr);
        EXPECT_NE(LoadLibrary(path("libground.so").c_str()), nullptr);
        EXPECT_EQ(takeLog(), "+ground +top ");
        session.modules.clear();
        EXPECT_EQ(takeLog(), "-top -ground ");
    }
    EXPECT_EQ(GetModuleHandle(L"libtop.so"), nullptr) << "nothing stays in the process";
}

TEST_F(Modules, RefusalsUndoWhatWasDone) {
    build("ground");
    build("bad", "-lground", 0);
    build("user", "-lbad");

    WinState session;
    EXPECT_EQ(LoadLibrary(path("libuser.so").c_str()), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_DLL_INIT_FAILED);
    // A module that refuses is told to detach; one that was never attached is not.
    EXPECT_EQ(takeLog(), "+ground +bad -bad -ground ");
    EXPECT_EQ(GetModuleHandle(L"libground.so"), nullptr);

    headless::ModuleTable::Failure failure;
    EXPECT_EQ(session.modules.load((folder_ / "libbad.so").string(), failure), nullptr);
    EXPECT_EQ(failure.text, "the entry point of libbad.so failed");

    EXPECT_EQ(LoadLibrary(path("none").c_str()), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(LoadLibrary(nullptr), nullptr);

    std::ofstream(folder_ / "text.arx") << "no module";
    failure = {};
    EXPECT_EQ(session.modules.load((folder_ / "text.arx").string(), failure), nullptr);
    EXPECT_NE(failure.text.find("text.arx"), string::npos) << failure.text;
}

TEST_F(Modules, ExportsAndNames) {
    build("ground");
    build("top", "-lground", 1, "int hidden() { return 1; }\n");
    WinState session;
    HMODULE const top = LoadLibrary(path("libtop.so").c_str());
    ASSERT_NE(top, nullptr);
    const FARPROC function = GetProcAddress(top, "top");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function(), 42);
    EXPECT_EQ(GetProcAddress(top, "ground"), nullptr) << "an export of what it depends on";
    EXPECT_EQ(GetLastError(), ERROR_PROC_NOT_FOUND);
    EXPECT_EQ(GetProcAddress(top, "hidden"), nullptr);
    EXPECT_EQ(GetProcAddress(nullptr, "top"), nullptr);

    wchar_t name[MAX_PATH];
    const DWORD length = GetModuleFileName(top, name, MAX_PATH);
    EXPECT_EQ(std::wstring(name, length), path("libtop.so"));
    EXPECT_EQ(GetModuleFileName(top, name, 5), 5U);
    EXPECT_EQ(std::wstring(name), path("libtop.so").substr(0, 4));
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(GetModuleHandle(path("libtop.so").c_str()), top);

    EXPECT_NE(GetModuleHandle(nullptr), nullptr);
    EXPECT_GT(GetModuleFileName(nullptr, name, MAX_PATH), 0U);
    EXPECT_TRUE(std::wstring(name).ends_with(L"test_win")) << "the program";
}

TEST_F(Modules, StringResourcesStandBesideTheModule) {
    build("top");
    std::ofstream(folder_ / "top.rc") << "STRINGTABLE BEGIN 5 \"五五五\" 6 \"\" END";
    WinState session;
    HMODULE const top = LoadLibrary(path("libtop.so").c_str());
    wchar_t text[8] = L"???????";
    EXPECT_EQ(LoadString(top, 5, text, 8), 3);
    EXPECT_STREQ(text, L"五五五");
    EXPECT_EQ(LoadString(top, 5, text, 3), 2);
    EXPECT_STREQ(text, L"五五");
    EXPECT_EQ(LoadString(top, 7, text, 8), 0);
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
    LPCWSTR resource = nullptr;
    EXPECT_EQ(LoadString(top, 5, reinterpret_cast<LPWSTR>(&resource), 0), 3);
    EXPECT_STREQ(resource, L"五五五");
    EXPECT_EQ(LoadString(nullptr, 5, text, 8), 0) << "the program has no such string";
}

TEST(NativePath, SeparatorsAndLetters) {
    EXPECT_EQ(headless::nativePath(L"C:\\图\\a/b.dxf"), "C:/图/a/b.dxf");
    EXPECT_EQ(headless::platformPath("/图/a.dxf"), L"/图/a.dxf");
}

} // namespace
