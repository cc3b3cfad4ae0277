// The module's entry points, called as the loader calls them.
#include <afxwin.h>

#include <gtest/gtest.h>

#include "mfc/state.h"

extern "C" int APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);
extern "C" unsigned int acrxGetApiVersion();

namespace {

class ModuleEntry : public testing::Test {
protected:
    int call(DWORD reason) { return DllMain(instance_, reason, nullptr); }

    headless::MfcState mfc_;
    int module_ = 0;
    HINSTANCE instance_ = reinterpret_cast<HINSTANCE>(&module_);
};

TEST_F(ModuleEntry, TellsTheHostItsRelease) { EXPECT_EQ(acrxGetApiVersion(), 0x140000U); }

TEST_F(ModuleEntry, AttachesTwoExtensionModulesAndDetachesBoth) {
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(call(DLL_PROCESS_ATTACH), 1);
        EXPECT_EQ(mfc_.extensionModules.size(), 2U);
        EXPECT_EQ(mfc_.libraries.size(), 2U);
        EXPECT_EQ(call(DLL_PROCESS_DETACH), 1);
        EXPECT_TRUE(mfc_.extensionModules.empty());
        EXPECT_TRUE(mfc_.libraries.empty());
    }
}

TEST_F(ModuleEntry, InitialisesTheSecondRecordOnceOnly) {
    call(DLL_PROCESS_ATTACH);
    call(DLL_PROCESS_ATTACH);
    EXPECT_EQ(mfc_.extensionModules.size(), 2U);
    EXPECT_EQ(mfc_.libraries.size(), 3U); // The first record's is made at every attach.
    call(DLL_PROCESS_DETACH);
}

TEST_F(ModuleEntry, FailsToAttachWhenItsOwnRecordFails) {
    mfc_.initialisationsBeforeFailure = 0;
    EXPECT_EQ(call(DLL_PROCESS_ATTACH), 0);
    EXPECT_TRUE(mfc_.libraries.empty());
}

TEST_F(ModuleEntry, AttachesWithoutTheSecondRecordAndTriesAgainLater) {
    mfc_.initialisationsBeforeFailure = 1;
    EXPECT_EQ(call(DLL_PROCESS_ATTACH), 1);
    EXPECT_EQ(mfc_.libraries.size(), 1U);
    EXPECT_EQ(call(DLL_PROCESS_DETACH), 1);

    mfc_.initialisationsBeforeFailure = -1;
    EXPECT_EQ(call(DLL_PROCESS_ATTACH), 1);
    EXPECT_EQ(mfc_.libraries.size(), 2U);
    EXPECT_EQ(call(DLL_PROCESS_DETACH), 1);
}

TEST_F(ModuleEntry, LetsThreadsComeAndGo) {
    EXPECT_EQ(call(DLL_THREAD_ATTACH), 1);
    EXPECT_EQ(call(DLL_THREAD_DETACH), 1);
    EXPECT_TRUE(mfc_.extensionModules.empty());
}

} // namespace
