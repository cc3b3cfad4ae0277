#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include <rxdlinkr.h>

#include "headless/session.h"
#include "support/temporary_folder.h"

namespace {

using testing::HasSubstr;

std::filesystem::path modulePath(const char* name) {
    return std::filesystem::path(ORN_TEST_MODULES) / name;
}

/// Messages by number: 1 start, 2 end, 3 drawing opened, 4 drawing closed, 8 quit, 13 about to
/// quit.
TEST(ModuleLoading, ModulesAreToldOfEverythingInOrder) {
    std::wstring printed;
    {
        headless::Session session({.sink = [&](std::wstring_view text) { printed += text; }});
        session.newDrawing();
        ASSERT_EQ(session.loadModule(modulePath("good.arx")), std::nullopt);
        EXPECT_EQ(session.output(), L"<needed attach><good attach><good 1><good 3>");
        EXPECT_EQ(session.loadModule(modulePath("good.arx")), std::nullopt);
        session.clearOutput();
        session.newDrawing();
        session.closeDrawings();
        EXPECT_EQ(session.output(), L"<good 3><good 4><good 4>");
        printed.clear();
    }
    EXPECT_EQ(printed, L"<good 13><good 8><good 2><good detach><needed detach>");
}

TEST(ModuleLoading, CommandsOfAModuleLiveAsLongAsItDoes) {
    headless::Session session;
    EXPECT_FALSE(session.run(L"SHOWVALUE"));
    ASSERT_EQ(session.loadModule(modulePath("good.arx")), std::nullopt);
    EXPECT_TRUE(session.run(L"SHOWVALUE"));
    EXPECT_THAT(session.output(), HasSubstr(L"The value is 42"));

    EXPECT_FALSE(acrxDynamicLinker->isApplicationLocked(L"good.arx"));
    EXPECT_TRUE(acrxDynamicLinker->isAppMDIAware(L"good.arx"));
    EXPECT_TRUE(acrxUnloadModule(L"good.arx"));
    EXPECT_FALSE(acrxUnloadModule(L"good.arx"));
    EXPECT_FALSE(session.run(L"SHOWVALUE"));
}

TEST(ModuleLoading, ModulesNeededTwiceAreStartedOnceAndEndedLast) {
    headless::Session session;
    ASSERT_EQ(session.loadModule(modulePath("good.arx")), std::nullopt);
    session.clearOutput();
    ASSERT_EQ(session.loadModule(modulePath("libtest_module_needed.so")), std::nullopt);
    EXPECT_EQ(session.output(), L"");
    EXPECT_TRUE(acrxUnloadModule(L"good.arx"));
    EXPECT_EQ(session.output(), L"<good 2><good detach>");
}

TEST(ModuleLoading, LockedApplicationStays) {
    headless::Session session;
    ASSERT_EQ(session.loadModule(modulePath("library_only.arx")), std::nullopt);
    EXPECT_TRUE(acrxDynamicLinker->isApplicationLocked(L"library_only.arx"));
    EXPECT_FALSE(acrxUnloadModule(L"library_only.arx"));
}

TEST(ModuleLoading, UnfitFilesAreRefusedInOneLine) {
    const test_support::TemporaryFolder folder;
    std::ofstream(folder.path() / "picture.arx") << "\xFF\xD8\xFF\xE0 JFIF";
    std::ofstream(folder.path() / "empty.arx");
    const struct {
        std::filesystem::path path;
        const char* message;
    } cases[] = {
        {folder.path() / "missing.arx", "missing.arx: no such file"},
        {folder.path(), "no such file"},
        {folder.path() / "picture.arx", "picture.arx: "},
        {folder.path() / "empty.arx", "empty.arx: "},
        {modulePath("wrong_version.arx"),
         "wrong_version.arx: built for API version 0x150000, this host has 0x140000"},
        {modulePath("no_version.arx"), "no_version.arx: "},
        {modulePath("failing_start.arx"), "failing_start.arx: "},
        {modulePath("refusing.arx"), "refusing.arx: "},
    };
    headless::Session session;
    for (const auto& c : cases) {
        const auto error = session.loadModule(c.path);
        ASSERT_TRUE(error.has_value()) << c.path;
        EXPECT_THAT(*error, HasSubstr(c.message));
        EXPECT_EQ(error->find('\n'), std::string::npos);
    }
    // Whatever was attached before it was refused has been detached again.
    EXPECT_EQ(session.output(), L"<wrong attach><wrong detach><needed attach>"
                                L"<none attach><none detach><needed detach>");
    EXPECT_FALSE(acrxLoadModule(L"missing.arx", true));
    EXPECT_THAT(session.output(), HasSubstr(L"missing.arx: no such file"));
}

} // namespace
