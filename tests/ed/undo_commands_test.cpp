// UNDO, U and REDO as users, scripts and programs give them.
#include "db/block_table.h"
#include "db/point.h"
#include "ed/command_runner.h"
#include "editor_fixture.h"

namespace {

/// Points in the current drawing's model space that are not erased.
int countPoints() {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectPointer<AcDbBlockTableRecord> space(db->modelSpaceId());
    int count = 0;
    for (const AcDbObjectId id : space->entityIds())
        count += id.isErased() ? 0 : 1;
    return count;
}

void addPoint() {
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectPointer<AcDbBlockTableRecord> space(db->modelSpaceId(), AcDb::kForWrite);
    auto* const point = new AcDbPoint;
    EXPECT_EQ(space->appendAcDbEntity(point), Acad::eOk);
    point->close();
}

void undo(const wchar_t* option) {
    EXPECT_EQ(acedCommandS(RTSTR, L".UNDO", RTSTR, option, RTNONE), RTNORM);
}

/// Work that is taken back before the command ends, as the product does it.
void peep() {
    addPoint();
    undo(L"BEGIN");
    acedCommandS(RTSTR, L".UNDO", RTSTR, L"AUTO", RTSTR, L"OFF", RTNONE);
    undo(L"MARK");
    addPoint();
    acedCommandS(RTSTR, L"ADD", RTNONE);
    acdbHostApplicationServices()->workingDatabase()->setLtscale(7.0);
    undo(L"BACK");
    acedCommandS(RTSTR, L".UNDO", RTSTR, L"AUTO", RTSTR, L"ON", RTNONE);
    undo(L"END");
}

class UndoCommandTest : public EditorTest {
protected:
    UndoCommandTest() {
        acedRegCmds->addCommand(L"G", L"ADD", nullptr, ACRX_CMD_MODAL, addPoint);
        acedRegCmds->addCommand(L"G", L"PEEP", nullptr, ACRX_CMD_MODAL, peep);
    }
    std::wstring variable(const wchar_t* name) {
        return std::to_wstring(std::get<Adesk::Int16>(*ed_.variables.get(name)));
    }
};

TEST_F(UndoCommandTest, ScriptsUndoAndRedo) {
    const struct {
        const char* name;
        std::vector<const wchar_t*> lines;
        int points;
        const wchar_t* printed;
    } cases[] = {
        {"each command is a step", {L"ADD", L"ADD", L"U"}, 1, L"ADD"},
        {"several at once", {L"ADD", L"ADD", L"ADD", L"UNDO 2"}, 1, L""},
        {"Enter means one", {L"ADD", L"ADD", L"_.UNDO", L""}, 1, L""},
        {"more than there are", {L"ADD", L"UNDO 9"}, 0, L"Everything has been undone"},
        {"none", {L"U"}, 0, L"Nothing to undo"},
        {"redo reverses all of it", {L"ADD", L"ADD", L"UNDO 2", L"REDO"}, 2, L""},
        {"redo step by step", {L"ADD", L"ADD", L"U", L"U", L"REDO"}, 1, L""},
        {"redo after a change", {L"ADD", L"U", L"ADD", L"REDO"}, 1, L"Nothing to redo"},
        {"a group is one step", {L"ADD", L"UNDO BE", L"ADD", L"ADD", L"UNDO E", L"U"}, 1, L"GROUP"},
        {"a group ends another", {L"UNDO BE", L"ADD", L"UNDO BE", L"ADD", L"UNDO E", L"U"}, 1, L""},
        {"within a group", {L"ADD", L"UNDO BE", L"ADD", L"UNDO 5", L"UNDO E"}, 1, L""},
        {"back to the mark", {L"ADD", L"UNDO M", L"ADD", L"ADD", L"UNDO B"}, 1, L""},
        {"marks are used up", {L"ADD", L"UNDO M", L"ADD", L"UNDO B", L"UNDO B"}, 0, L"OK?"},
        {"the user may decline", {L"ADD", L"UNDO B", L"N"}, 1, L""},
        {"a mark on the way", {L"ADD", L"UNDO M", L"U"}, 1, L"Mark encountered"},
        {"work taken back by its command", {L"ADD", L"PEEP"}, 2, L""},
        {"and undone with it", {L"ADD", L"PEEP", L"U"}, 1, L"PEEP"},
        {"turned off", {L"ADD", L"UNDO C N", L"ADD", L"U"}, 2, L"Undo is turned off"},
        {"turned on again", {L"UNDO C N", L"ADD", L"UNDO C A", L"ADD", L"UNDO 5"}, 1, L""},
        {"only one", {L"UNDO C O", L"ADD", L"ADD", L"UNDO 5"}, 1, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ed_.documents.open(std::make_unique<AcDbDatabase>(true, true), L"New.dwg", false);
        ed_.output.clear();
        for (const wchar_t* const line : c.lines)
            type(line);
        ed_.runner.runPending(false);
        EXPECT_EQ(countPoints(), c.points);
        EXPECT_TRUE(printed(c.printed)) << testing::PrintToString(ed_.output.text());
        EXPECT_EQ(drawing().ltscale(), 1.0);
    }
}

TEST_F(UndoCommandTest, ProgramsTakeTheirWorkBack) {
    addPoint();
    peep(); // Outside any command.
    EXPECT_EQ(countPoints(), 2);
    EXPECT_EQ(drawing().ltscale(), 1.0);
    EXPECT_EQ(variable(L"UNDOCTL"), L"5");
    EXPECT_EQ(variable(L"UNDOMARKS"), L"0");
    undo(L"BEGIN");
    undo(L"MARK");
    EXPECT_EQ(variable(L"UNDOCTL"), L"13");
    EXPECT_EQ(variable(L"UNDOMARKS"), L"1");
}

TEST_F(UndoCommandTest, SystemVariablesComeBack) {
    AcDbObjectPointer<AcDbLayerTable> layers(drawing().layerTableId(), AcDb::kForWrite);
    auto* const wall = new AcDbLayerTableRecord;
    wall->setName(L"WALL");
    ASSERT_EQ(layers->add(wall), Acad::eOk);
    wall->close();
    layers.close();
    undo(L"MARK");
    const std::pair<const wchar_t*, headless::VariableValue> changes[] = {
        {L"CLAYER", L"WALL"}, {L"TILEMODE", Adesk::Int16{0}}, {L"LUPREC", Adesk::Int16{7}}};
    for (const auto& [name, value] : changes) {
        const auto before = ed_.variables.get(name);
        ASSERT_EQ(ed_.variables.set(name, value), headless::SetOutcome::done);
        undo(L"BACK");
        EXPECT_EQ(ed_.variables.get(name), before) << testing::PrintToString(name);
        undo(L"MARK");
    }
    EXPECT_EQ(drawing().currentSpaceId(), drawing().modelSpaceId());
}

} // namespace
