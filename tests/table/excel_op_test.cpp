#include "table/excel_op.h"

#include <filesystem>
#include <fstream>
#include <functional>

#include <sys/stat.h>

#include "support/png.h"
#include "support/session_fixture.h"
#include "support/temporary_folder.h"
#include "support/workbook_dump.h"
#include "table/auto_wrap.h"
#include "table/grid_to_cad_table.h"

namespace {

constexpr long kCenter = -4108;
constexpr long kRight = -4152;
constexpr long kContinuous = 1;
constexpr long kThin = 2;
constexpr long kMedium = -4138;

class Excel : public test_support::SessionTest {
protected:
    [[nodiscard]] CString path(const char* name) const {
        return CString((folder_.path() / name).wstring().c_str());
    }
    [[nodiscard]] std::string nativePath(const char* name) const {
        return (folder_.path() / name).string();
    }
    void expectBoxes(const std::vector<std::wstring>& texts) const {
        EXPECT_EQ(session().messageBoxes(), texts);
    }
    const headless::Session& session() const {
        return const_cast<Excel*>(this)->test_support::SessionTest::session();
    }

    test_support::TemporaryFolder folder_;
};

TEST_F(Excel, EveryOperationReachesTheFile) {
    std::ofstream(nativePath("logo.png"), std::ios::binary) << test_support::onePixelPng();
    {
        CExcelOP excel;
        ASSERT_EQ(excel.Create(1, 0), 1);
        EXPECT_EQ(excel.GetSheetsCount(), 3);
        const auto run = [&](const char* what, int result) { EXPECT_EQ(result, 1) << what; };
        run("name", excel.SetSheetName(1, L"板"));
        run("add", excel.AddWorksheet(4));
        EXPECT_EQ(excel.GetSheetsCount(), 4);
        run("text", excel.SetCellValue(L"A1", COleVariant(L"楼板")));
        run("number", excel.SetCellValue(2, 1, COleVariant(12.5)));
        run("formula", excel.SetCellFormula(L"A3", L"A4", L"=A2*2"));
        run("comment", excel.SetCellComment(L"A2", L"A2", L"measured"));
        run("format", excel.SetNumFormat(L"A2", L"A2", L"0.00"));
        run("right", excel.SetCellHAlignment(L"B1", L"B1", kRight, 2));
        run("middle", excel.SetCellVAlignment(L"B1", L"B1", kCenter));
        run("control", excel.SetCellTextControl(L"B2", L"C2", 1, 0, 1));
        run("turned", excel.SetCellOrientation(L"B3", L"B3", 45));
        run("height", excel.SetRowHeight(L"A5", L"A6", 30.0));
        run("width", excel.SetColumnWidth(L"D1", L"E1", 20.0));
        run("font", excel.SetCellFont(L"B4", L"B4", L"Arial", L"Bold Italic", 14.0, 2, 1,
                                      RGB(255, 0, 0), 1, 0));
        run("font name", excel.SetCellFontName(L"C4", L"C4", L"Courier"));
        run("font style", excel.SetCellFontStyle(L"C4", L"C4", L"加粗"));
        run("font size", excel.SetCellFontSize(L"C4", L"C4", 9.0));
        run("font colour", excel.SetCellFontColor(L"C4", L"C4", RGB(0, 0, 255)));
        run("underline", excel.SetCellFontUnderline(L"C4", L"C4", -4119));
        run("strike", excel.SetCellFontStrikethrough(L"C4", L"C4", 1));
        run("subscript", excel.SetCellFontSubSuper(L"C4", L"C4", 0, 1));
        run("border", excel.SetCellBorder(L"B6", L"C7", 7, kContinuous, kMedium, RGB(1, 2, 3)));
        run("borders", excel.SetCellBorders(L"F1", L"F1", -4119, 4, 0));
        run("around", excel.SetCellBorderAround(L"G1", L"H2", kContinuous, kThin, RGB(9, 9, 9)));
        run("fill", excel.SetCellPartern(L"F2", L"F2", 1, RGB(255, 255, 0)));
        run("merge", excel.MergeCell(L"G4", L"H5", 1));
        run("all", excel.SetCellValueRHCWColorAlognmentBorders(9, 1, COleVariant(7.0), 24.0, 15.0,
                                                               kCenter, kCenter, 0, RGB(0, 255, 0),
                                                               kContinuous, kThin, 0));
        run("picture", excel.InsertPic(L"J1", L"J1", path("logo.png"), 10.0, 40.0));
        run("row", excel.InsertRow(L"A8", L"A8"));
        run("fit", excel.SetColumnAutoFit(L"B1", L"B1"));
        EXPECT_STREQ(excel.GetCellValue(L"A1"), L"楼板");
        EXPECT_STREQ(excel.GetCellValue(2, 1), L"12.500000");
        run("sheet 2", excel.SetActiveSheet(2));
        run("all cells", excel.SetNumFormat(L"@"));
        run("save", excel.SaveWorkbookAs(path("a.xlsx")));
        run("again", excel.SaveWorkbook());
        excel.Close();
    }
    expectBoxes({});
    const auto lines = test_support::dumpWorkbook(nativePath("a.xlsx"));
    if (!lines) GTEST_SKIP() << "python3-openpyxl is not installed";
    const char* expected[] = {
        "sheets 板 Sheet2 Sheet3 Sheet4 active Sheet2",
        "板!A1 value '楼板'",
        "板!A2 value 12.5",
        "板!A2 format 0.00",
        "板!A2 comment None: measured",
        "板!A3 value '=A2*2'",
        "板!A4 value '=A3*2'",
        "板!B1 align right center 2 0 False False",
        "板!B2 align None None 0 0 True False",
        "板 merged B2:C2 G4:H5",
        "板!B3 align None None 0 45 False False",
        "板 row 5 30.0",
        "板 row 6 30.0",
        "板 column D 20.7109",
        "板!B4 font Arial 14.0 bold italic strike single superscript FFFF0000",
        "板!C4 font Courier 9.0 bold strike double subscript FF0000FF",
        "板!B6 left medium FF010203",
        "板!B7 left medium FF010203",
        "板!F1 left double FF000000",
        "板!F1 bottom double FF000000",
        "板!G1 left thin FF090909",
        "板!H1 right thin FF090909",
        "板!H2 bottom thin FF090909",
        "板!F2 fill solid FFFFFF00",
        "板!A10 value 7", // pushed down
        "板!A10 font Calibri 11.0 None None FF00FF00",
        "板!A10 top thin FF000000",
        "part xl/media/image1.png",
        "Sheet2 column A 9.1406",
    };
    for (const char* line : expected)
        EXPECT_TRUE(lines->contains(line)) << line;
    EXPECT_FALSE(lines->contains("板!C6 left medium FF010203")) << "only the range's edge";
    EXPECT_FALSE(lines->contains("板!H1 left thin FF090909"));
}

TEST_F(Excel, FilesAreOpenedChangedAndClosed) {
    CExcelOP excel;
    ASSERT_EQ(excel.Create(1, 0), 1);
    COleVariant date(45292.5);
    date.vt = VT_DATE;
    excel.SetCellValue(1, 1, date);
    excel.SetNumFormat(L"A1", L"A1", L"yyyy-mm-dd");
    excel.SetCellValue(1, 2, COleVariant(long{1}, VT_BOOL));
    EXPECT_EQ(excel.SaveWorkbookAs(path("a.xlsx")), 1);
    EXPECT_EQ(excel.CloseWorkbook(), 0) << "none is left";
    excel.Close();

    ASSERT_EQ(excel.Open(path("a.xlsx"), 1, 1), 1);
    EXPECT_STREQ(excel.GetCellValue(1, 1), L"2024-01-01 12:00:00");
    EXPECT_STREQ(excel.GetCellValue(L"B1"), L"TRUE");
    EXPECT_STREQ(excel.GetCellValue(L"C1"), L"");
    ASSERT_EQ(excel.CreateWorkbook(), 1);
    EXPECT_EQ(excel.CloseWorkbook(), 1) << "the first one is left";
    const CExcelOP copy = excel;
    excel.Close();
    expectBoxes({});
}

TEST_F(Excel, FailuresAreToldInTheirWords) {
    std::ofstream(nativePath("text.xlsx")) << "no workbook";
    std::ofstream(nativePath("read-only.xlsx")) << "old";
    chmod(nativePath("read-only.xlsx").c_str(), 0444);
    struct Case {
        const wchar_t* box;
        std::function<int(CExcelOP&)> run;
    };
    const Case early[] = {
        {L"请先创建应用程序!", [](CExcelOP& e) { return e.CreateWorkbooks(); }},
        {L"WorkBooks为空!", [](CExcelOP& e) { return e.CreateWorkbook(); }},
        {L"WorkBook为空!", [](CExcelOP& e) { return e.CreateWorksheets(); }},
        {L"WorkSheets为空!", [](CExcelOP& e) { return e.CreateWorksheet(1); }},
        {L"WorkSheets为空!", [](CExcelOP& e) { return e.AddWorksheet(2); }},
        {L"WorkSheets为空!", [](CExcelOP& e) { return e.OpenWorkbook(L"a.xlsx"); }},
        {L"Book获取失败!", [](CExcelOP& e) { return e.SaveWorkbook(); }},
        {L"Book获取失败!", [](CExcelOP& e) { return e.SaveWorkbookAs(L"a.xlsx"); }},
        {L"Sheet获取失败!", [](CExcelOP& e) { return e.GetCellRange(L"A1", L"A1"); }},
        {L"Sheet获取失败!", [](CExcelOP& e) { return e.SetCellFontSize(L"A1", L"A1", 9.0); }},
    };
    std::vector<std::wstring> boxes;
    CExcelOP excel;
    for (const Case& c : early) {
        EXPECT_EQ(c.run(excel), 0);
        boxes.emplace_back(c.box);
    }
    ASSERT_EQ(excel.Create(1, 0), 1);
    const Case late[] = {
        {L"WorkSheet创建失败!", [](CExcelOP& e) { return e.CreateWorksheet(9); }},
        {L"文件打开失败!", [&](CExcelOP& e) { return e.OpenWorkbook(path("no.xlsx")); }},
        {L"文件打开失败!", [&](CExcelOP& e) { return e.OpenWorkbook(path("text.xlsx")); }},
    };
    for (const Case& c : late) {
        EXPECT_EQ(c.run(excel), 0);
        boxes.emplace_back(c.box);
    }
    expectBoxes(boxes);

    ASSERT_EQ(excel.CreateWorkbook(), 1);
    ASSERT_EQ(excel.CreateWorksheets(), 1);
    ASSERT_EQ(excel.CreateWorksheet(1), 1);
    EXPECT_EQ(excel.GetCellRange(L"ZZZZ1", L"A1"), 0);
    EXPECT_EQ(session().messageBoxes().back(), L"Range获取失败!");
    EXPECT_EQ(excel.SetActiveSheet(9), 0);
    EXPECT_EQ(excel.SetSheetName(9, L"x"), 0);
    EXPECT_EQ(session().messageBoxes().size(), boxes.size() + 1);
    // These have no words of their own: the application's or the system's are shown.
    ASSERT_EQ(excel.CreateWorksheet(1), 1);
    const std::pair<const wchar_t*, std::function<int()>> others[] = {
        {L"Permission denied", [&] { return excel.SaveWorkbookAs(path("read-only.xlsx")); }},
        {L"No such file or directory", [&] { return excel.SaveWorkbookAs(path("no/a.xlsx")); }},
        {L"takes LibreOffice", [&] { return excel.SaveWorkbookAs(path("a.xls")); }},
        {L"no.png", [&] { return excel.InsertPic(L"A1", L"A1", path("no.png"), 9.0, 9.0); }},
        {L"no PNG", [&] { return excel.InsertPic(L"A1", L"A1", path("text.xlsx"), 9.0, 9.0); }},
        {L"HorizontalAlignment", [&] { return excel.SetCellHAlignment(L"A1", L"A1", 3, 0); }},
        {L"at most 31", [&] { return excel.SetSheetName(1, CString(L'x', 32)); }},
    };
    for (const auto& [words, run] : others) {
        EXPECT_EQ(run(), 0);
        const std::wstring box = session().messageBoxes().back();
        EXPECT_NE(box.find(words), std::wstring::npos) << testing::PrintToString(box);
    }
    std::ifstream kept(nativePath("read-only.xlsx"));
    std::string text;
    kept >> text;
    EXPECT_EQ(text, "old");
    excel.Close();
}

TEST(ExcelMissing, IsTold) {
    headless::SessionOptions options;
    options.spreadsheet = false;
    const headless::Session session(options);
    CExcelOP excel;
    EXPECT_EQ(excel.Create(1, 1), 0);
    EXPECT_EQ(excel.CreateWorkbooks(), 0);
    EXPECT_EQ(session.messageBoxes(),
              (std::vector<std::wstring>{L"应用程序创建失败，请确保安装了Office2003或以上版本!",
                                         L"请先创建应用程序!"}));
}

TEST(CellNames, FollowTheirRules) {
    struct Case {
        int column;
        int row;
        const wchar_t* name;
    };
    const Case cases[] = {
        {1, 1, L"A1"}, {26, 3, L"Z3"}, {27, 2, L"AA2"},   {52, 1, L"AZ1"},   {676, 5, L"YZ5"},
        {0, 1, L""},   {-3, 1, L""},   {677, 1, L"AZA1"}, {1352, 7, L"BZ7"},
    };
    for (const Case& c : cases)
        EXPECT_STREQ(CExcelOP::GetCellName(c.column, c.row), c.name) << c.column;
    EXPECT_STREQ(CExcelOP::GetColumnName(0), L"Z");
    EXPECT_STREQ(CExcelOP::GetColumnName(27), L"");
    EXPECT_STREQ(CExcelOP::GetColumnName(-1), L"");
}

TEST_F(Excel, MembersAreCalledByTheirNames) {
    COleDispatchDriver application;
    ASSERT_TRUE(application.CreateDispatch(L"Excel.Application"));
    LPDISPATCH object = application;
    const auto child = [](IDispatch* parent, const wchar_t* name) {
        VARIANT result{};
        EXPECT_EQ(kelmor::AutoWrap(DISPATCH_PROPERTYGET, &result, parent, name, 0), S_OK) << name;
        return COleDispatchDriver(result.pdispVal);
    };
    COleDispatchDriver books = child(object, L"Workbooks");
    VARIANT made{};
    EXPECT_EQ(CGridToCadTable::AutoWrap(DISPATCH_METHOD, &made, books, L"Add", 0), S_OK);
    COleDispatchDriver book(made.pdispVal);
    COleDispatchDriver sheet = child(object, L"ActiveSheet");
    const COleVariant first(L"A1");
    const COleVariant last(L"B2");
    VARIANT found{};
    // The last argument first.
    ASSERT_EQ(kelmor::AutoWrap(DISPATCH_PROPERTYGET, &found, sheet, L"Range", 2,
                               static_cast<VARIANT>(last), static_cast<VARIANT>(first)),
              S_OK);
    COleDispatchDriver range(found.pdispVal);

    const SAFEARRAYBOUND bounds[] = {{2, 1}, {2, 1}};
    COleVariant values;
    values.vt = VT_ARRAY | VT_VARIANT;
    values.parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    for (LONG row = 1; row <= 2; ++row) {
        for (LONG column = 1; column <= 2; ++column) {
            const LONG indices[] = {row, column};
            COleVariant value(static_cast<double>(row * 10 + column));
            SafeArrayPutElement(values.parray, indices, static_cast<LPVARIANT>(value));
        }
    }
    EXPECT_EQ(kelmor::AutoWrap(DISPATCH_PROPERTYPUT, nullptr, range, L"value2", 1,
                               static_cast<VARIANT>(values)),
              S_OK);
    COleVariant back;
    EXPECT_EQ(kelmor::AutoWrap(DISPATCH_PROPERTYGET, &back, range, L"Value2", 0), S_OK);
    ASSERT_EQ(back.vt, VT_ARRAY | VT_VARIANT);
    const LONG corner[] = {2, 1};
    COleVariant element;
    SafeArrayGetElement(back.parray, corner, static_cast<LPVARIANT>(element));
    EXPECT_EQ(element.dblVal, 21.0);

    EXPECT_EQ(kelmor::AutoWrap(DISPATCH_METHOD, nullptr, range, L"NoSuchMember", 0), -1);
    EXPECT_EQ(kelmor::AutoWrap(DISPATCH_METHOD, nullptr, range, L"Value2", 0), -1);
    EXPECT_EQ(kelmor::AutoWrap(DISPATCH_METHOD, nullptr, nullptr, L"Value2", 0), -1);
    expectBoxes({});
}

TEST_F(Excel, WhatIsNotReleasedIsALeftover) {
    CExcelOP excel;
    ASSERT_EQ(excel.Create(1, 0), 1);
    EXPECT_FALSE(session().leftovers().empty());
    excel.Close();
    EXPECT_TRUE(session().leftovers().empty());
}

} // namespace
