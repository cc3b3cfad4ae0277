// What is read from a file when somebody asks for it, long after the drawing was opened.
#include "db/data_item.h"
#include "db/entity.h"
#include "db/object_data.h"
#include "db/xrecord.h"
#include "drawing_fixture.h"

namespace headless::testing {
namespace {

/// "code=text" of each value.
std::vector<std::wstring> shown(const DataItems& items) {
    std::vector<std::wstring> all;
    for (const DataItem& item : items)
        all.push_back(std::to_wstring(item.code) + L'=' + std::wstring(item.text()));
    return all;
}

using Values = std::vector<std::wstring>;

/// A drawing in code page 936 with an entity that has data, one without, and an xrecord.
std::string drawingText(const std::string& lineEnd) {
    const std::string bars = "0|SECTION|2|HEADER|9|$ACADVER|1|AC1015|9|$DWGCODEPAGE|3|ANSI_936|0|"
                             "ENDSEC|0|SECTION|2|ENTITIES|"
                             "0|POINT|5|A1|102|{ACAD_REACTORS|330|B1|102|}|8|0|10|1|20|2|999|note|"
                             "30|0|1001|APP|1000|\xB0\xE5|999|note|1000|\\U+6881|1003|0|"
                             "0|POINT|5|A2|8|0|10|1|20|2|30|0|"
                             "0|ENDSEC|0|SECTION|2|OBJECTS|0|DICTIONARY|5|C|"
                             "0|XRECORD|5|B1|330|C|100|AcDbXrecord|280|1|1|\xB0\xE5|102|{x|"
                             "1|  |102|}|0|ENDSEC|0|EOF|";
    return lines(bars, lineEnd);
}

TEST(ReadAgain, FindsRecordsWithTheirTextsDecoded) {
    for (const char* const lineEnd : {"\n", "\r\n", "\r"}) {
        SCOPED_TRACE(::testing::PrintToString(std::string(lineEnd)));
        const Drawing drawing(drawingText(lineEnd));
        ASSERT_TRUE(drawing.result) << drawing.result.refusal;
        const auto* const point = at<AcDbObject>(drawing, 0xA1);
        const auto* const plain = at<AcDbObject>(drawing, 0xA2);
        const auto* const record = at<AcDbXrecord>(drawing, 0xB1);
        ASSERT_TRUE(point != nullptr && plain != nullptr && record != nullptr);
        EXPECT_EQ(shown(ObjectData::xdata(*point)),
                  (Values{L"1001=APP", L"1000=\x677F", L"1000=\x6881", L"1003=0"}));
        EXPECT_EQ(ObjectData::reactors(*point), std::vector{record->objectId()});
        EXPECT_TRUE(Residence::source(*plain).plain);
        EXPECT_FALSE(Residence::source(*point).plain);
        EXPECT_TRUE(ObjectData::xdata(*plain).empty());
        EXPECT_EQ(shown(record->items()), (Values{L"1=\x677F", L"102={x", L"1=  ", L"102=}"}));
    }
}

TEST(ReadAgain, LastRecordOfACutFileIsFound) {
    std::string text = drawingText("\n");
    text.resize(text.find("0\nXRECORD"));
    const Drawing drawing(text);
    ASSERT_TRUE(drawing.result) << drawing.result.refusal;
    const auto* const point = at<AcDbObject>(drawing, 0xA1);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(ObjectData::xdata(*point).size(), 4U);
    EXPECT_EQ(ObjectData::reactors(*point).size(), 1U) << "an announced object is noted too";
}

} // namespace
} // namespace headless::testing
