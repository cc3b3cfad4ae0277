// The prompt classes, answered by clicks and by typing.
#include <gmock/gmock.h>

#include <aced.h>
#include <adslib.h>
#include <dbapserv.h>
#include <dbents.h>
#include <geassign.h>

#include "interact/ac_ui_pr_entity.h"
#include "interact/ac_ui_pr_point.h"
#include "interact/ac_ui_pr_string.h"
#include "support/session_fixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class PromptsTest : public test_support::SessionTest {
protected:
    AcDbObjectId addLine(const AcGePoint3d& a, const AcGePoint3d& b, const ACHAR* layer = L"0") {
        auto line = std::make_unique<AcDbLine>(a, b);
        line->setDatabaseDefaults(database());
        line->setLayer(addLayer(layer));
        return add(std::move(line));
    }
    static AcGePoint3d lastPoint() {
        resbuf value{};
        EXPECT_EQ(acedGetVar(L"LASTPOINT", &value), RTNORM);
        return asPnt3d(value.resval.rpoint);
    }
    static void expectPoint(const AcGePoint3d& point, const AcGePoint3d& wanted) {
        EXPECT_TRUE(point.isEqualTo(wanted)) << point.x << "," << point.y << "," << point.z;
    }
};

TEST_F(PromptsTest, AnyEntityUnlessClassesAreNamed) {
    const AcDbObjectId line = addLine({0, 50, 0}, {100, 50, 0});
    const AcDbObjectId outline = addPolyline({{{0, 80}}, {{100, 80}}, {{100, 90}}});
    AcUiPrEntity any(L"Pick", L"");
    session().clickAt({10, 50, 0});
    EXPECT_EQ(any.go(), AcUiPrBase::kNormal);
    EXPECT_EQ(any.objectId(), line);
    expectPoint(any.pickPoint(), {10, 50, 0});
    EXPECT_THAT(session().output(), HasSubstr(L"\nPick: "));

    const struct {
        const char* name;
        AcRxClass* cls;
        bool exact;
        AcDbObjectId picked; // of the line and then the outline
    } cases[] = {
        {"of that class", AcDbPolyline::desc(), true, outline},
        {"derived, exactly asked", AcDbCurve::desc(), true, {}},
        {"derived", AcDbCurve::desc(), false, line},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcUiPrEntity prompt(L"Pick", nullptr);
        EXPECT_EQ(prompt.addAllowedClass(c.cls, c.exact), Acad::eOk);
        EXPECT_EQ(prompt.addAllowedClass(c.cls, !c.exact), Acad::eDuplicateKey);
        session().clickAt({10, 50, 0});
        session().clickAt({10, 80, 0});
        const bool taken = !c.picked.isNull();
        EXPECT_EQ(prompt.go(), taken ? AcUiPrBase::kNormal : AcUiPrBase::kCancelled);
        EXPECT_EQ(prompt.objectId(), c.picked);
        while (prompt.go() != AcUiPrBase::kCancelled) {
        }
    }
    AcUiPrEntity two(L"Pick", L"");
    two.addAllowedClass(AcDbCircle::desc(), false);
    two.addAllowedClass(AcDbArc::desc(), false);
    EXPECT_EQ(two.addAllowedClass(nullptr, false), Acad::eInvalidInput);
    session().clickAt({10, 50, 0});
    EXPECT_EQ(two.go(), AcUiPrBase::kCancelled);
    EXPECT_THAT(session().output(),
                HasSubstr(L"\nSelected entity must be of type: AcDbCircle, AcDbArc"));
}

TEST_F(PromptsTest, EntityAnswersOtherThanAnEntity) {
    AcUiPrEntity prompt(L"Pick", L"Undo Done");
    const AcDbObjectId line = addLine({0, 50, 0}, {100, 50, 0});
    session().clickAt({50, 20, 0});
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNormal);
    EXPECT_TRUE(prompt.objectId().isNull());
    expectPoint(prompt.pickPoint(), {50, 20, 0});
    // A miss leaves the entity that was picked before.
    session().clickAt({50, 50, 0});
    session().clickAt({50, 20, 0});
    prompt.go();
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNormal);
    EXPECT_EQ(prompt.objectId(), line);

    session().typeText(L"");
    EXPECT_EQ(prompt.go(), AcUiPrBase::kCancelled);
    prompt.setAllowNone(true);
    session().typeText(L"");
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNone);
    session().typeEscape();
    EXPECT_EQ(prompt.go(), AcUiPrBase::kCancelled);
    session().typeText(L"d");
    EXPECT_EQ(prompt.go(), AcUiPrBase::kKeyWord);
    EXPECT_STREQ(static_cast<const AcUiPrBase&>(prompt).keyWordPicked(), L"Done");
    EXPECT_TRUE(prompt.isKeyWordPicked(L"Done"));
    EXPECT_FALSE(prompt.isKeyWordPicked(L"done"));

    // What the host cannot explain is asked again.
    session().setFaultHook([first = true](const char* call) mutable {
        return std::string_view(call) == "acedEntSel" && std::exchange(first, false);
    });
    session().clickAt({50, 50, 0});
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNormal);
    EXPECT_THAT(session().output(), HasSubstr(L"\nNothing selected."));
    session().setFaultHook(
        [](const char* call) { return std::string_view(call) == "acdbOpenAcDbObject"; });
    session().clickAt({50, 50, 0});
    EXPECT_EQ(prompt.go(), AcUiPrBase::kCancelled);
    EXPECT_THAT(session().output(), HasSubstr(L"\nARX ERROR: eWasOpenForWrite"));
}

TEST_F(PromptsTest, LockedLayersAreFilteredOnRequest) {
    const AcDbObjectId line = addLine({0, 50, 0}, {100, 50, 0}, L"locked");
    AcDbObjectPointer<AcDbLayerTableRecord>(addLayer(L"locked"), AcDb::kForWrite)
        ->setIsLocked(true);
    AcUiPrEntity prompt(L"Pick", L"");
    EXPECT_FALSE(prompt.filterLockedLayers());
    session().clickAt({50, 50, 0});
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNormal);
    EXPECT_EQ(prompt.objectId(), line);

    EXPECT_EQ(prompt.setFilterLockedLayers(true), Acad::eOk);
    session().clickAt({50, 50, 0});
    session().typeEscape();
    EXPECT_EQ(prompt.go(), AcUiPrBase::kCancelled);
    EXPECT_THAT(session().output(), HasSubstr(L"\nSelected entity is on a locked layer."));
}

TEST_F(PromptsTest, PointsStartFromTheirBase) {
    AcUiPrPoint plain(L"Where", L"Origin");
    session().typeText(L"");
    session().clickAt({3, 4, 0});
    EXPECT_EQ(plain.go(), AcUiPrBase::kNormal) << "Enter alone is refused";
    expectPoint(plain.value(), {3, 4, 0});
    expectPoint(lastPoint(), {3, 4, 0});

    AcUiPrPoint based(L"Where", L"Origin", {100, 100, 0});
    session().typeText(L"@1,2");
    EXPECT_EQ(based.go(), AcUiPrBase::kNormal);
    expectPoint(based.value(), {101, 102, 0});
    based.setUseBasePt(false);
    session().typeText(L"@1,2");
    EXPECT_EQ(based.go(), AcUiPrBase::kNormal);
    expectPoint(based.value(), {102, 104, 0});

    based.setAllowNone(true);
    based.setUseDashedLine(true);
    based.setNoLimitsCheck(true);
    for (const wchar_t* text : {L"", L"o"})
        session().typeText(text);
    EXPECT_EQ(based.go(), AcUiPrBase::kNone);
    EXPECT_EQ(based.go(), AcUiPrBase::kKeyWord);
    EXPECT_TRUE(based.isKeyWordPicked(L"Origin"));
    EXPECT_EQ(based.go(), AcUiPrBase::kCancelled);
    expectPoint(based.value(), {102, 104, 0});
    expectPoint(lastPoint(), {102, 104, 0});
    EXPECT_TRUE(based.setBasePt({1, 1, 0}) == Acad::eOk && based.basePt().x == 1);
}

TEST_F(PromptsTest, TextsHaveNoKeywords) {
    AcUiPrString prompt(L"Name", true);
    EXPECT_EQ(prompt.setKeyWords(L"Yes No"), Acad::eNotApplicable);
    EXPECT_STREQ(prompt.keyWords(), L"");
    EXPECT_EQ(prompt.keyWordPicked(), nullptr);
    EXPECT_STREQ(static_cast<const AcUiPrString&>(prompt).keyWordPicked(), L"");
    session().typeText(L"Yes");
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNormal);
    EXPECT_FALSE(prompt.isKeyWordPicked(L"Yes"));
    session().typeLine(L"two words");
    EXPECT_EQ(prompt.go(), AcUiPrBase::kNormal);
    EXPECT_STREQ(prompt.value(), L"two words");
    EXPECT_EQ(prompt.go(), AcUiPrBase::kCancelled);
    EXPECT_STREQ(prompt.value(), L"two words");

    AcUiPrString word(L"Name", false);
    EXPECT_EQ(word.setMessage(L"Code"), Acad::eOk);
    EXPECT_STREQ(word.message(), L"Code");
    session().typeLine(L"two words");
    EXPECT_EQ(word.go(), AcUiPrBase::kNormal);
    EXPECT_STREQ(word.value(), L"two");
    EXPECT_THAT(session().output(), HasSubstr(L"\nCode: "));
}

} // namespace
