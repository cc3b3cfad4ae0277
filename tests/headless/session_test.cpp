#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include <acdocman.h>
#include <adslib.h>
#include <afxwin.h>
#include <dbapserv.h>
#include <dbents.h>
#include <dbmain.h>
#include <dbpl.h>
#include <dbsymtb.h>

#include "headless/session.h"
#include "support/session_fixture.h"
#include "support/temporary_folder.h"

namespace {

using headless::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Session, OneAtATimeAndNothingIsCarriedOver) {
    {
        Session session({.ansiCodePage = 1252});
        session.newDrawing();
        EXPECT_THROW(Session(), std::logic_error);
        acutPrintf(L"hello");
        AfxMessageBox(L"box");
        resbuf value{};
        value.restype = RTSHORT;
        value.resval.rint = 0;
        acedSetVar(L"CMDECHO", &value);
        session.typeLine(L"never asked for");
        EXPECT_EQ(session.output(), L"hello");
        EXPECT_THAT(session.messageBoxes(), ElementsAre(L"box"));
        EXPECT_EQ(GetACP(), 1252U);
    }
    const Session session;
    EXPECT_EQ(session.output(), L"");
    EXPECT_THAT(session.messageBoxes(), IsEmpty());
    EXPECT_EQ(GetACP(), 936U);
    EXPECT_EQ(session.database(), nullptr);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
    resbuf value{};
    ASSERT_EQ(acedGetVar(L"CMDECHO", &value), RTNORM);
    EXPECT_EQ(value.resval.rint, 1);
    ACHAR answer[133];
    EXPECT_EQ(acedGetString(1, nullptr, answer), RTCAN);
}

TEST(Session, LeftoversNameWhatIsLeft) {
    Session session;
    session.newDrawing();
    EXPECT_THAT(session.leftovers(), IsEmpty());

    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(session.database()->getBlockTable(table, AcDb::kForRead), Acad::eOk);
    EXPECT_THAT(session.leftovers(),
                ElementsAre(HasSubstr("AcDbBlockTable 1 is open for reading")));
    table->upgradeOpen();
    EXPECT_THAT(session.leftovers(), ElementsAre(HasSubstr("is open for writing")));
    table->close();

    auto line = std::make_unique<AcDbLine>(AcGePoint3d::kOrigin, AcGePoint3d(1, 0, 0));
    AcDbBlockTableRecord* space = nullptr;
    ASSERT_EQ(acdbOpenObject(space, session.database()->modelSpaceId(), AcDb::kForWrite),
              Acad::eOk);
    space->appendAcDbEntity(line.get());
    space->close();
    line->highlight();
    line->close();
    EXPECT_THAT(session.leftovers(), ElementsAre("1 entities are still highlighted"));
    AcDbEntity* shown = nullptr;
    ASSERT_EQ(acdbOpenObject(shown, line.release()->objectId(), AcDb::kForWrite), Acad::eOk);
    shown->erase();
    shown->close();
    EXPECT_THAT(session.leftovers(), IsEmpty()) << "what is erased shows no more";

    auto database = std::make_unique<AcDbDatabase>(true, true);
    EXPECT_THAT(session.leftovers(), ElementsAre(HasSubstr("belongs to no document")));
    database.reset();

    acDocManager->lockDocument(curDoc());
    EXPECT_THAT(session.leftovers(), ElementsAre("document Drawing1.dwg is locked 1 times"));
    acDocManager->unlockDocument(curDoc());

    resbuf* chain = acutBuildList(RTSHORT, 1, RTSHORT, 2, RTNONE);
    EXPECT_THAT(session.leftovers(), ElementsAre("2 result buffers were not released"));
    acutRelRb(chain);

    BSTR text = SysAllocString(L"text");
    EXPECT_THAT(session.leftovers(), ElementsAre("1 automation strings were not freed"));
    SysFreeString(text);
    EXPECT_THAT(session.leftovers(), IsEmpty());
}

TEST(Session, UseOfAClosedObjectIsReported) {
    Session session;
    session.newDrawing();
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(session.database()->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(table->getAt(L"0", layer, AcDb::kForRead), Acad::eOk);
    table->close();
    layer->setIsOff(true);
    layer->close();
    EXPECT_THAT(session.leftovers(),
                ElementsAre(HasSubstr("was used without being open for writing")));
}

TEST(Session, ScriptsRunLineByLine) {
    Session session;
    session.newDrawing();
    acedRegCmds->addCommand(L"T", L"SAY", L"SAY", ACRX_CMD_MODAL, [] {
        ACHAR text[133];
        if (acedGetString(1, L"\nWhat: ", text) == RTNORM) acutPrintf(L"\n[%s]", text);
    });
    std::istringstream script("; a comment\nSAY\n楼板 一\r\n\nagain\nSAY last\n");
    EXPECT_TRUE(session.runScript(script));
    EXPECT_THAT(session.output(), HasSubstr(L"[楼板 一]"));
    EXPECT_THAT(session.output(), HasSubstr(L"[again]")); // Enter repeats the command.
    EXPECT_THAT(session.output(), HasSubstr(L"[last]"));

    std::istringstream unfinished("SAY\n");
    EXPECT_TRUE(session.runScript(unfinished));
    EXPECT_THAT(session.output(), HasSubstr(L"no more input"));

    session.typeLine(L"queued");
    EXPECT_TRUE(session.run(L"SAY"));
    EXPECT_THAT(session.output(), HasSubstr(L"[queued]"));
}

TEST(Session, DrawingsOpenAsDocuments) {
    const test_support::TemporaryFolder folder;
    const auto drawing = folder.path() / "plan.dxf";
    std::ofstream(drawing)
        << "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nwalls\n10\n0\n20\n0\n11\n1\n21\n"
           "1\n0\nENDSEC\n0\nEOF\n";
    std::ofstream(folder.path() / "picture.dxf") << "\xFF\xD8\xFF\xE0 JFIF";

    Session session;
    const headless::OpenResult opened = session.openDrawing(drawing);
    ASSERT_TRUE(opened) << opened.refusal;
    EXPECT_EQ(opened.document, curDoc());
    EXPECT_EQ(curDoc()->database(), session.database());
    EXPECT_STREQ(curDoc()->docTitle(), L"plan.dxf");
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(session.database()->getLayerTable(layers, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(layers->has(L"walls"));
    layers->close();

    for (const char* bad : {"picture.dxf", "missing.dxf"}) {
        const headless::OpenResult refused = session.openDrawing(folder.path() / bad);
        EXPECT_FALSE(refused);
        EXPECT_THAT(refused.refusal, HasSubstr(bad));
        EXPECT_EQ(refused.document, nullptr);
    }
    EXPECT_EQ(acDocManager->documentCount(), 1);
    EXPECT_THAT(session.leftovers(), IsEmpty());
    session.closeDrawings();
    EXPECT_EQ(session.database(), nullptr);
}

TEST(Session, CommandsSaveDrawings) {
    const test_support::TemporaryFolder folder;
    const auto first = (folder.path() / "first one.dxf").wstring();
    const auto copy = (folder.path() / "copy.dxf").wstring();
    Session session;
    session.newDrawing();
    EXPECT_EQ(session.database()->saveAs(L""), Acad::eInvalidInput);
    EXPECT_EQ(session.database()->saveAs((folder.path() / "no" / "x.dxf").wstring().c_str()),
              Acad::eCantOpenFile);

    session.typeLine(first); // It has no file yet.
    EXPECT_TRUE(session.run(L"QSAVE"));
    EXPECT_EQ(curDoc()->fileName(), first);
    EXPECT_TRUE(curDoc()->isNamedDrawing());
    session.typeLine(copy);
    EXPECT_TRUE(session.run(L"SAVE"));
    EXPECT_EQ(curDoc()->fileName(), first);
    session.typeLine(copy);
    EXPECT_TRUE(session.run(L"SAVEAS"));
    EXPECT_EQ(curDoc()->fileName(), copy);
    for (const auto& file : {first, copy})
        EXPECT_TRUE(session.openDrawing(file));
    EXPECT_THAT(session.leftovers(), IsEmpty());
}

using SessionFixture = test_support::SessionTest;

TEST_F(SessionFixture, AddsPolylinesOnLayers) {
    const AcDbObjectId id = addPolyline({{{0, 0}}, {{10, 0}, 1}, {{10, 10}}}, true, L"boards");
    const AcDbObjectPointer<AcDbPolyline> polyline(id);
    ASSERT_EQ(polyline.openStatus(), Acad::eOk);
    EXPECT_EQ(polyline->numVerts(), 3U);
    EXPECT_TRUE(polyline->isClosed());
    EXPECT_EQ(polyline->layerId(), addLayer(L"Boards"));
    EXPECT_EQ(polyline->blockId(), database()->modelSpaceId());
}

} // namespace
