#include <memory>
#include <numbers>

#include <gmock/gmock.h>

#include "ed/measures.h"
#include "editor_fixture.h"

namespace {

using DocumentTest = EditorTest;

AcApDocument* openAnother(headless::EdState& ed) {
    return ed.documents.open(std::make_unique<AcDbDatabase>(true, true), L"Drawing2.dwg", false);
}

TEST_F(DocumentTest, CurrentDocumentBringsItsDatabase) {
    AcApDocument* first = curDoc();
    EXPECT_STREQ(first->fileName(), L"/plans/Storey 1.dxf");
    EXPECT_STREQ(first->docTitle(), L"Storey 1.dxf");
    AcApDocument* second = openAnother(ed_);
    EXPECT_EQ(acDocManager->mdiActiveDocument(), second);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), second->database());
    EXPECT_EQ(acDocManager->document(first->database()), first);
    EXPECT_EQ(acDocManager->documentCount(), 2);

    EXPECT_EQ(acDocManager->setCurDocument(first), Acad::eOk);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), first->database());
    EXPECT_EQ(acDocManager->setCurDocument(nullptr), Acad::eInvalidInput);

    ed_.documents.close(first);
    EXPECT_EQ(curDoc(), second);
    ed_.documents.close(second);
    EXPECT_EQ(curDoc(), nullptr);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
}

TEST_F(DocumentTest, LocksAreCounted) {
    AcApDocument* document = curDoc();
    EXPECT_EQ(acDocManager->lockDocument(document, AcAp::kRead), Acad::eOk);
    EXPECT_EQ(acDocManager->lockDocument(document, AcAp::kXWrite), Acad::eOk);
    EXPECT_EQ(acDocManager->lockDocument(document, AcAp::kWrite), Acad::eOk);
    EXPECT_EQ(document->myLockMode(), AcAp::kXWrite);
    EXPECT_EQ(headless::Documents::lockCount(*document), 3U);
    EXPECT_EQ(acDocManager->unlockDocument(document), Acad::eOk);
    EXPECT_EQ(acDocManager->unlockDocument(document), Acad::eOk);
    EXPECT_EQ(document->myLockMode(), AcAp::kRead);
    EXPECT_EQ(acDocManager->unlockDocument(document), Acad::eOk);
    EXPECT_EQ(acDocManager->unlockDocument(document), Acad::eInvalidInput);
    EXPECT_EQ(acDocManager->lockDocument(document, AcAp::kNotLocked), Acad::eInvalidInput);
    EXPECT_EQ(acDocManager->lockDocument(nullptr), Acad::eInvalidInput);
}

TEST_F(DocumentTest, SentTextIsTypedForTheDocument) {
    openAnother(ed_);
    const std::unique_ptr<AcApDocumentIterator> all(acDocManager->newAcApDocumentIterator());
    AcApDocument* first = all->document();
    EXPECT_EQ(acDocManager->sendStringToExecute(first, L"AREA all "), Acad::eOk);
    EXPECT_EQ(curDoc(), first);
    EXPECT_EQ(std::get<std::wstring>(ed_.input.nextLine().value), L"AREA all");
    EXPECT_EQ(acDocManager->sendStringToExecute(first, nullptr), Acad::eInvalidInput);
}

TEST(Measures, AnglesGoOnceAround) {
    constexpr double kPi = std::numbers::pi;
    const struct {
        double x, y, angle;
    } cases[] = {
        {0, 0, 0},
        {1, 0, 0},
        {0, 1, kPi / 2},
        {-1, 0, kPi},
    };
    for (const auto& c : cases) {
        const ads_point from = {5, 5, 3};
        const ads_point to = {5 + c.x, 5 + c.y, -8};
        EXPECT_NEAR(acutAngle(from, to), c.angle, 1e-15) << c.x << "," << c.y;
    }
    const ads_point origin = {0, 0, 0};
    const ads_point almostBelow = {1, -1e-300, 0};
    EXPECT_EQ(acutAngle(origin, almostBelow), 0.0);
    const ads_point far = {2, 3, 6};
    EXPECT_EQ(acutDistance(origin, far), 7.0);

    ads_point point = {1, 1, 9};
    acutPolar(point, kPi / 2, 4, point);
    EXPECT_NEAR(point[0], 1.0, 1e-15);
    EXPECT_EQ(point[1], 5.0);
    EXPECT_EQ(point[2], 9.0);
}

} // namespace
