// What texts of a drawing say.
#include <dbents.h>
#include <dbmtext.h>

#include "frame/ac_ut_db.h"
#include "support/session_fixture.h"

namespace {

using DrawingText = test_support::SessionTest;

std::unique_ptr<AcDbText> singleLine(const wchar_t* contents) {
    auto text = std::make_unique<AcDbText>();
    text->setTextString(contents);
    return text;
}

std::unique_ptr<AcDbMText> paragraph(const wchar_t* contents) {
    auto text = std::make_unique<AcDbMText>();
    text->setContents(contents);
    return text;
}

TEST(ConvertAcDbTextString, MarksOnlyBetweenItsBounds) {
    EXPECT_EQ(AcUtDb::convertAcDbTextString(L"a\u00B0", 127, 206), L"a%%\u00B0");
    EXPECT_EQ(AcUtDb::convertAcDbTextString(L"\u007F\u0080\u00CD\u00CE", 127, 206),
              L"\u007F%%\u0080%%\u00CD\u00CE");
    EXPECT_EQ(AcUtDb::convertAcDbTextString(L"板", 127, 206), L"板");
    EXPECT_TRUE(AcUtDb::convertAcDbTextString(L"", 127, 206).IsEmpty());
}

TEST_F(DrawingText, IsReadFromPointersAndIds) {
    EXPECT_EQ(AcUtDb::getTextString(singleLine(L"90\u00B0").get()), L"90%%\u00B0");
    EXPECT_EQ(AcUtDb::getTextString(add(singleLine(L"%%c12 板"))), L"%%c12 板");
    EXPECT_EQ(AcUtDb::getMTextContents(paragraph(L"{\\H2;a}\\Pb\u00B1").get()),
              L"{\\H2;a}\\Pb%%\u00B1");
    EXPECT_EQ(AcUtDb::getMTextContents(add(paragraph(L"\\A1;x"))), L"\\A1;x");
}

TEST_F(DrawingText, IsPlainOnDemand) {
    EXPECT_EQ(AcUtDb::GetMTextData(paragraph(L"{\\fSimSun|b0;AB}\u00B0").get()), L"AB\u00B0");
}

TEST_F(DrawingText, IsEmptyWhereThereIsNone) {
    EXPECT_TRUE(AcUtDb::getTextString(static_cast<AcDbText*>(nullptr)).IsEmpty());
    EXPECT_TRUE(AcUtDb::getMTextContents(static_cast<AcDbMText*>(nullptr)).IsEmpty());
    EXPECT_TRUE(AcUtDb::GetMTextData(nullptr).IsEmpty());
    EXPECT_TRUE(AcUtDb::getTextString(AcDbObjectId::kNull).IsEmpty());
    EXPECT_TRUE(AcUtDb::getTextString(add(paragraph(L"x"))).IsEmpty()) << "not a single line";
    EXPECT_TRUE(AcUtDb::getMTextContents(add(singleLine(L"x"))).IsEmpty()) << "not a paragraph";
}

TEST_F(DrawingText, LeavesTheObjectOpenAsItWas) {
    const AcDbObjectId id = add(singleLine(L"x"));
    AcDbText* text = nullptr;
    for (const AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite}) {
        ASSERT_EQ(acdbOpenObject(text, id, mode), Acad::eOk);
        EXPECT_EQ(AcUtDb::getTextString(text), L"x");
        EXPECT_EQ(text->isWriteEnabled(), mode == AcDb::kForWrite);
        text->close();
    }
}

// Two readers keep the fields as they are, yet the text is still read.
TEST_F(DrawingText, IsReadWhileOthersReadToo) {
    const AcDbObjectId id = add(singleLine(L"x"));
    AcDbText* other = nullptr;
    ASSERT_EQ(acdbOpenObject(other, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(AcUtDb::getTextString(id), L"x");
    other->close();
}

} // namespace
