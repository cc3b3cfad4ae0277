// Calls of the platform that fail on purpose.
#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <aced.h>
#include <dbents.h>
#include <rxmfcapi.h>

#include "support/fault_injection.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;

class FaultsTest : public test_support::SessionTest {};

TEST_F(FaultsTest, EachCallFailsInItsTurn) {
    const AcDbObjectId id = addPolyline({{{0, 0}}, {{10, 0}}, {{10, 10}}});
    std::vector<std::string> failed;
    std::vector<int> statuses;
    const auto erase = [&] {
        statuses.clear();
        AcDbObject* object = nullptr;
        statuses.push_back(acdbOpenAcDbObject(object, id, AcDb::kForRead));
        if (object == nullptr) return;
        statuses.push_back(object->upgradeOpen());
        if (statuses.back() == Acad::eOk) statuses.push_back(object->erase());
        object->close();
    };
    const int calls = test_support::failEachCall(session(), erase, [&](const std::string& call) {
        failed.push_back(call);
        EXPECT_EQ(statuses.back() == Acad::eOk, call.empty());
    });
    EXPECT_EQ(calls, 3);
    EXPECT_THAT(failed, ElementsAre("acdbOpenAcDbObject", "upgradeOpen", "erase", ""));
    EXPECT_TRUE(id.isErased());
}

TEST_F(FaultsTest, LeftoversOfAnErrorPathAreFound) {
    const AcDbObjectId id = addPolyline({{{0, 0}}, {{10, 0}}, {{10, 10}}});
    AcDbObject* object = nullptr;
    const auto leaky = [&] {
        acdbOpenAcDbObject(object, id, AcDb::kForRead);
        if (object != nullptr && object->upgradeOpen() == Acad::eOk) object->close();
    };
    static headless::Session* current = nullptr;
    static std::function<void()> operation;
    current = &session();
    operation = leaky;
    EXPECT_NONFATAL_FAILURE(
        test_support::failEachCall(*current, operation, [](const std::string&) {}),
        "is open for reading");
    object->close();
}

TEST_F(FaultsTest, ACommandThatCannotLockItsDocumentLeavesNoLock) {
    static int runs = 0;
    acedRegCmds->addCommand(L"T", L"COUNT", L"COUNT", ACRX_CMD_MODAL, [] { ++runs; });
    const auto run = [&] { session().run(L"COUNT"); };
    EXPECT_GE(test_support::failEachCall(session(), run, [](const std::string&) {}), 1);
    acedRegCmds->removeGroup(L"T");
    EXPECT_GE(runs, 2);
}

TEST_F(FaultsTest, AFilterLeftBehindIsReported) {
    const AcedFilterWinMsgFn filter = [](MSG*) { return FALSE; };
    acedRegisterFilterWinMsg(filter);
    EXPECT_THAT(session().leftovers(), ElementsAre("1 message filters were not removed"));
    acedRemoveFilterWinMsg(filter);
}

} // namespace
