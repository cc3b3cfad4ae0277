// Ids, entity names, handles, and the texts of statuses.
#include "frame/ac_ut_db.h"
#include "frame/ac_ut_ui.h"
#include "frame_fixture.h"

namespace {

class NamesOfObjects : public FrameTest {};

TEST_F(NamesOfObjects, EntityNamesGoThereAndBack) {
    const AcDbObjectId id = addLine();
    ads_name name;
    EXPECT_EQ(AcUtDb::objIdToEname(id, name), Acad::eOk);
    AcDbObjectId back;
    EXPECT_EQ(AcUtDb::enameToObjId(name, back), Acad::eOk);
    EXPECT_EQ(back, id);
    EXPECT_EQ(printed(), L"");

    EXPECT_EQ(AcUtDb::objIdToEname(AcDbObjectId::kNull, name), Acad::eNullObjectId);
    EXPECT_EQ(printed(), L"");
    ads_name nothing = {0, 0};
    EXPECT_EQ(AcUtDb::enameToObjId(nothing, back), Acad::eInvalidAdsName);
    EXPECT_EQ(printed(), L"\nARX ERROR: eInvalidAdsName");
}

TEST_F(NamesOfObjects, HandlesGoThereAndBack) {
    const AcDbObjectId id = addLine();
    CString handle = L"before";
    const wchar_t* text = AcUtDb::objIdToHandleStr(id, handle);
    EXPECT_STREQ(text, handle);
    EXPECT_FALSE(handle.IsEmpty());
    AcDbObjectId back;
    EXPECT_EQ(AcUtDb::handleStrToObjId(database(), handle, back, true), Acad::eOk);
    EXPECT_EQ(back, id);
    EXPECT_EQ(AcUtDb::handleStrToObjId(nullptr, handle.MakeLower(), back, true), Acad::eOk);
    EXPECT_EQ(printed(), L"");
}

TEST_F(NamesOfObjects, UnknownHandlesAreToldWhenAsked) {
    AcDbObjectId id;
    for (const bool speak : {false, true}) {
        EXPECT_EQ(AcUtDb::handleStrToObjId(database(), L"FFFFFF", id, speak), Acad::eInvalidInput);
        EXPECT_EQ(printed(),
                  speak ? L"\nERROR: Could not translate handle to objectId (eUnknownHandle)"
                        : L"");
    }
    CString handle = L"before";
    EXPECT_STREQ(AcUtDb::objIdToHandleStr(AcDbObjectId::kNull, handle), L"");
    EXPECT_TRUE(handle.IsEmpty());
}

TEST_F(NamesOfObjects, StatusesArePrintedOnALineOfTheirOwn) {
    AcUtUi::rxErrorMsg(Acad::eOk);
    EXPECT_EQ(printed(), L"");
    AcUtUi::rxErrorMsg(Acad::eOnLockedLayer);
    EXPECT_EQ(printed(), L"\nARX ERROR: eOnLockedLayer");
    EXPECT_STREQ(AcUtUi::rxErrorStr(Acad::eWasErased), L"eWasErased");

    AcUtUi::rxErrorAlert(Acad::eWasErased);
    EXPECT_EQ(printed(), L"");
    EXPECT_TRUE(session().messageBoxes().empty());
}

} // namespace
