#include <memory>

#include <gmock/gmock.h>

#include "ed/command_runner.h"
#include "ed/prompts.h"
#include "editor_fixture.h"

namespace {

using CommandTest = EditorTest;

void askName() {
    ACHAR name[133];
    const int answer = acedGetString(1, L"\nName: ", name);
    if (answer == RTNORM) acutPrintf(L"\nHello %s", name);
}

void askNumber() {
    int number = 0;
    if (acedGetInt(L"\nNumber: ", &number) == RTNORM) acutPrintf(L"\nGot %d", number);
}

void callAskName() {
    const int answer = acedCommandS(RTSTR, L"ASKNAME", RTSTR, L"a b", RTNONE);
    acutPrintf(L"\nThen %d", answer);
}

void showNames() {
    resbuf names{};
    acedGetVar(L"CMDNAMES", &names);
    acutPrintf(L"\nIn %s", names.resval.rstring);
    acutDelString(names.resval.rstring);
    acutPrintf(L" lock %d", curDoc()->myLockMode());
}

void removeOwnGroup() { acedRegCmds->removeGroup(L"G"); }

void addCommand(const wchar_t* name, AcRxFunctionPtr function, int flags = ACRX_CMD_MODAL) {
    ASSERT_EQ(acedRegCmds->addCommand(L"G", name, nullptr, flags, function), Acad::eOk);
}

TEST_F(CommandTest, RegistryRefusesDoublesWithinAGroup) {
    AcEdCommandStack& stack = *acedRegCmds;
    AcEdCommand* command = nullptr;
    EXPECT_EQ(stack.addCommand(L"G", L"AREA", L"FLAECHE", ACRX_CMD_MODAL, askName, nullptr, -1,
                               nullptr, &command),
              Acad::eOk);
    ASSERT_NE(command, nullptr);
    EXPECT_STREQ(command->localName(), L"FLAECHE");
    EXPECT_EQ(stack.addCommand(L"g", L"area", L"X", 0, askName), Acad::eDuplicateKey);
    EXPECT_EQ(stack.addCommand(L"G", L"X", L"Flaeche", 0, askName), Acad::eDuplicateKey);
    EXPECT_EQ(stack.addCommand(L"H", L"AREA", L"AREA", 0, askNumber), Acad::eOk);
    EXPECT_EQ(stack.addCommand(nullptr, L"B", L"B", 0, askName), Acad::eInvalidInput);
    EXPECT_EQ(stack.addCommand(L"G", L"", L"B", 0, askName), Acad::eInvalidInput);
    EXPECT_EQ(stack.addCommand(L"G", L"B", L"B", 0, nullptr), Acad::eInvalidInput);

    // The group added last is searched first, until another is put on top.
    EXPECT_EQ(stack.lookupCmd(L"area", true)->functionAddr(), &askNumber);
    EXPECT_EQ(stack.popGroupToTop(L"G"), Acad::eOk);
    EXPECT_EQ(stack.lookupCmd(L"AREA", true), command);
    EXPECT_EQ(stack.lookupCmd(L"flaeche", false), command);
    EXPECT_EQ(stack.lookupCmd(L"flaeche", true), nullptr);

    const std::unique_ptr<AcEdCommandIterator> all(stack.iterator());
    EXPECT_STREQ(all->commandGroup(), L"G");
    EXPECT_TRUE(all->next());
    EXPECT_STREQ(all->commandGroup(), L"H");
    EXPECT_STREQ(all->command()->globalName(), L"AREA");

    EXPECT_EQ(stack.removeCmd(L"G", L"nothing"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.removeCmd(L"G", L"AREA"), Acad::eOk);
    EXPECT_EQ(stack.removeGroup(L"H"), Acad::eOk);
    EXPECT_EQ(stack.removeGroup(L"H"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.lookupCmd(L"AREA", true), nullptr);
}

TEST_F(CommandTest, InputRunsCommandsAndAnswersThem) {
    const struct {
        const char* name;
        std::vector<const wchar_t*> typed;
        bool allKnown;
        const wchar_t* printed;
    } cases[] = {
        {"answer on the next line", {L"askname", L"two words"}, true, L"Hello two words"},
        {"answer on the same line", {L"ASKNUMBER 7"}, true, L"Got 7"},
        {"Enter repeats the last", {L"ASKNUMBER 7", L"", L"8"}, true, L"Got 8"},
        {"no answer left", {L"ASKNUMBER"}, true, L"no more input"},
        {"unknown", {L"nonsense"}, false, L"Unknown command \"NONSENSE\".  Press F1 for help."},
        {"goes on after an unknown one", {L"nonsense", L"ASKNUMBER 7"}, false, L"Got 7"},
        {"nothing after QUIT", {L"ASKNUMBER 7", L"quit", L"nonsense"}, true, L"Got 7"},
        {"underscore, dot and apostrophe", {L"'_.ASKNUMBER 7"}, true, L"Got 7"},
    };
    addCommand(L"ASKNAME", askName);
    addCommand(L"ASKNUMBER", askNumber);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ed_.output.clear();
        ed_.input.clear();
        for (const wchar_t* line : c.typed)
            type(line);
        EXPECT_EQ(ed_.runner.runPending(false), c.allKnown);
        EXPECT_TRUE(printed(c.printed)) << testing::PrintToString(ed_.output.text());
    }
}

TEST_F(CommandTest, CommandsRunCommands) {
    addCommand(L"ASKNAME", askName);
    addCommand(L"CALL", callAskName);
    type(L"CALL");
    type(L"ASKNAME");
    type(L"outer");
    EXPECT_TRUE(ed_.runner.runPending(false));
    EXPECT_TRUE(printed(L"Hello a b"));
    EXPECT_TRUE(printed(L"Then 5100"));
    EXPECT_TRUE(printed(L"Hello outer"));
}

TEST_F(CommandTest, CmdechoSilencesOnlyCommandsOfCommands) {
    addCommand(L"ASKNAME", askName);
    ed_.variables.set(L"CMDECHO", Adesk::Int16{0});
    acedCommandS(RTSTR, L"ASKNAME", RTSTR, L"quiet", RTNONE);
    EXPECT_EQ(ed_.output.text(), L"\nHello quiet");
    ed_.output.clear();
    type(L"ASKNAME");
    type(L"loud");
    ed_.runner.runPending(false);
    EXPECT_EQ(ed_.output.text(), L"\nCommand: ASKNAME\nName: loud\nHello loud");
    ed_.output.clear();
    ed_.variables.set(L"CMDECHO", Adesk::Int16{1});
    acedCommandS(RTSTR, L"ASKNAME", RTSTR, L"loud", RTNONE);
    EXPECT_EQ(ed_.output.text(), L"\nCommand: ASKNAME\nName: loud\nHello loud");
}

TEST_F(CommandTest, ArgumentsOfEveryType) {
    addCommand(L"ASKNAME", askName);
    addCommand(L"ASKNUMBER", askNumber);
    EXPECT_EQ(acedCommandS(RTSTR, L"ASKNUMBER", RTSHORT, 12, RTSTR, L"ASKNAME", RTSTR, L"", 0),
              RTNORM);
    EXPECT_TRUE(printed(L"Got 12"));
    EXPECT_EQ(acedCommandS(RTSTR, L"ASKNUMBER", RTREAL, 1.5, RTLONG, 70, RTNONE), RTNORM);
    EXPECT_TRUE(printed(L"Got 70"));

    type(L"99");
    EXPECT_EQ(acedCommandS(RTSTR, L"ASKNUMBER", RTSTR, L"\\", RTNONE), RTNORM);
    EXPECT_TRUE(printed(L"Got 99"));

    EXPECT_EQ(acedCommandS(RTSTR, L"NONSENSE", RTNONE), RTERROR);
    EXPECT_EQ(acedCommandS(4711, RTNONE), RTREJ);
    EXPECT_EQ(acedCommandS(RTNONE), RTERROR);

    resbuf* list = acutBuildList(RTSTR, L"ASKNUMBER", RTSHORT, 5, RTNONE);
    EXPECT_EQ(acedCmdS(list), RTNORM);
    EXPECT_TRUE(printed(L"Got 5"));
    acutRelRb(list);
    EXPECT_EQ(acedCmdS(nullptr), RTERROR);
}

TEST_F(CommandTest, DocumentIsLockedWhileACommandRuns) {
    addCommand(L"SHOW", showNames);
    addCommand(L"SHOWSESSION", showNames, ACRX_CMD_SESSION);
    EXPECT_TRUE(ed_.runner.isQuiescent());
    EXPECT_EQ(ed_.runner.run(L"show"), RTNORM);
    EXPECT_TRUE(printed(L"In SHOW lock 4"));
    EXPECT_EQ(ed_.runner.run(L"SHOWSESSION"), RTNORM);
    EXPECT_TRUE(printed(L"In SHOWSESSION lock 0"));
    EXPECT_EQ(curDoc()->myLockMode(), AcAp::kNone);
}

TEST_F(CommandTest, CommandMayRemoveItself) {
    addCommand(L"GO", removeOwnGroup);
    EXPECT_EQ(ed_.runner.run(L"GO"), RTNORM);
    EXPECT_EQ(ed_.runner.run(L"GO"), RTERROR);
}

} // namespace
