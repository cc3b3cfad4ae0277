#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include <afxdllx.h>
#include <afxwin.h>

#include "mfc/state.h"
#include "win/state.h"

namespace fs = std::filesystem;

using headless::MfcState;
using headless::WinState;

namespace {

TEST(ExtensionModules, AreListedWhileInitialised) {
    MfcState session;
    WinState win;
    AFX_EXTENSION_MODULE first{};
    AFX_EXTENSION_MODULE second{};
    HMODULE const own = GetModuleHandle(nullptr);
    HMODULE const other = GetModuleHandle(L"libhost_mfc.so");
    ASSERT_NE(other, nullptr);

    AfxTermExtensionModule(first);
    EXPECT_TRUE(AfxInitExtensionModule(first, own));
    EXPECT_TRUE(AfxInitExtensionModule(second, other));
    EXPECT_TRUE(AfxInitExtensionModule(second, own)) << "a second time changes nothing";
    EXPECT_EQ(second.hModule, other);
    EXPECT_EQ(session.extensionModules, (std::vector{&first, &second}));

    auto* library = new CDynLinkLibrary(first);
    new CDynLinkLibrary(second);
    EXPECT_EQ(library->m_hResource, own);
    EXPECT_EQ(session.libraries.size(), 2U);
    AfxTermExtensionModule(first);
    ASSERT_EQ(session.libraries.size(), 1U) << "only the module's own";
    EXPECT_EQ(session.libraries[0]->m_hModule, other);
    EXPECT_EQ(session.extensionModules, std::vector{&second});
    EXPECT_TRUE(AfxInitExtensionModule(first, own)) << "a record may be used again";
    AfxTermExtensionModule(second, TRUE);
    AfxTermExtensionModule(first);
    EXPECT_TRUE(session.extensionModules.empty() && session.libraries.empty());
}

TEST(ExtensionModules, InitialisationCanBeMadeToFail) {
    MfcState session;
    session.initialisationsBeforeFailure = 1;
    AFX_EXTENSION_MODULE first{};
    AFX_EXTENSION_MODULE second{};
    EXPECT_TRUE(AfxInitExtensionModule(first, nullptr));
    EXPECT_FALSE(AfxInitExtensionModule(second, nullptr));
    EXPECT_FALSE(second.bInitialized);
    AfxTermExtensionModule(second);
    AfxTermExtensionModule(first);
}

TEST(ExtensionModules, LibrariesEndWithTheirSession) {
    auto first = std::make_unique<MfcState>();
    AFX_EXTENSION_MODULE record{};
    EXPECT_TRUE(AfxInitExtensionModule(record, nullptr));
    new CDynLinkLibrary(record);
    new CDynLinkLibrary(record);
    MfcState second;
    first.reset();
    EXPECT_EQ(&MfcState::current(), &second);
    AfxTermExtensionModule(record);
    EXPECT_FALSE(record.bInitialized) << "a record may outlive its session";
}

class Resources : public testing::Test {
protected:
    Resources() {
        store(program_, "STRINGTABLE BEGIN 1 \"program\" 2 \"%s: %d\" END");
        store(library_, "STRINGTABLE BEGIN 1 \"library\" 3 \"库\" END");
    }
    ~Resources() override {
        fs::remove(program_);
        fs::remove(library_);
    }

    static void store(const fs::path& path, const char* script) { std::ofstream(path) << script; }

    // Beside the two modules this program has in any case.
    const fs::path folder_ = fs::read_symlink("/proc/self/exe").parent_path();
    const fs::path program_ = folder_ / "test_mfc.rc";
    const fs::path library_ = folder_ / "host_mfc.rc";
    MfcState mfc_;
    WinState win_;
};

TEST_F(Resources, AreFoundInTheCurrentModuleThenInTheChain) {
    CString text = L"untouched";
    EXPECT_TRUE(text.LoadString(1));
    EXPECT_STREQ(text, L"program");
    EXPECT_FALSE(text.LoadString(3));
    EXPECT_STREQ(text, L"program");

    AFX_EXTENSION_MODULE record{};
    HMODULE const library = GetModuleHandle(L"libhost_mfc.so");
    EXPECT_TRUE(AfxInitExtensionModule(record, library));
    new CDynLinkLibrary(record);
    EXPECT_TRUE(text.LoadString(3));
    EXPECT_STREQ(text, L"库");
    EXPECT_STREQ(CString(MAKEINTRESOURCE(3)), L"库");
    EXPECT_EQ(AfxMessageBox(3U, MB_OKCANCEL), IDOK);
    EXPECT_EQ(AfxMessageBox(99U), -1);
    ASSERT_EQ(win_.messageBoxes.size(), 1U);
    EXPECT_EQ(win_.messageBoxes[0].text, L"库");
    EXPECT_EQ(win_.messageBoxes[0].caption, L"test_mfc");
    AfxTermExtensionModule(record);
    EXPECT_FALSE(text.LoadString(3));

    EXPECT_EQ(AfxGetResourceHandle(), GetModuleHandle(nullptr));
    AfxSetResourceHandle(library);
    EXPECT_EQ(AfxGetResourceHandle(), library);
    EXPECT_TRUE(text.LoadString(1));
    EXPECT_STREQ(text, L"library");
    EXPECT_TRUE(text.LoadString(AfxGetInstanceHandle(), 1));
    EXPECT_STREQ(text, L"program");
    AfxSetResourceHandle(nullptr);
    text.Format(2U, CString(L"板"), 7);
    EXPECT_STREQ(text, L"板: 7");
}

TEST_F(Resources, ExceptionsReportInABox) {
    win_.messageBoxAnswers = {IDRETRY};
    mfc_.applicationName = L"Boards";
    EXPECT_EQ(CFileException(CFileException::diskFull, 112, L"a.txt").ReportError(MB_RETRYCANCEL),
              IDRETRY);
    EXPECT_EQ(CUserException().ReportError(MB_OK, 1), IDOK);
    ASSERT_EQ(win_.messageBoxes.size(), 2U);
    EXPECT_EQ(win_.messageBoxes[0].text, L"The disk is full while accessing a.txt.");
    EXPECT_EQ(win_.messageBoxes[0].caption, L"Boards");
    EXPECT_EQ(win_.messageBoxes[1].text, L"program");
}

} // namespace
