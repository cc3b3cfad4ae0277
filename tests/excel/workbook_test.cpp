#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/stat.h>

#include "excel/formula_references.h"
#include "excel/full_workbook.h"
#include "excel/number_formats.h"
#include "excel/workbook_error.h"
#include "excel/workbook_files.h"
#include "support/temporary_folder.h"
#include "support/workbook_dump.h"
#include "support/workbook_patch.h"

using namespace headless::excel;
using excel_test::fullWorkbook;

namespace {

class Workbooks : public testing::Test {
protected:
    [[nodiscard]] std::string path(const char* name) const {
        return (folder_.path() / name).string();
    }
    [[nodiscard]] std::string bytesOf(const char* name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void store(const char* name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    [[nodiscard]] std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }

    test_support::TemporaryFolder folder_;
};

TEST_F(Workbooks, ComeBackAsTheyWere) {
    const auto book = fullWorkbook();
    writeWorkbook(*book, path("a.xlsx"));
    EXPECT_EQ(files(), 1U) << "nothing left beside it";
    const auto back = readWorkbook(path("a.xlsx"));

    EXPECT_TRUE(back->leftOut.empty()) << testing::PrintToString(back->leftOut);
    ASSERT_EQ(back->sheets.size(), 3U);
    EXPECT_EQ(back->sheets[1]->name, "Board list");
    EXPECT_EQ(back->sheets[2]->visibility, book->sheets[2]->visibility);
    EXPECT_EQ(back->activeSheet, 1U);
    EXPECT_EQ(back->properties, book->properties);
    ASSERT_EQ(back->names.size(), 2U);
    for (const DefinedName& name : back->names) {
        EXPECT_EQ(name.refersTo, name.name == "Local" ? "'Board list'!$A$1" : "Sheet1!$B$2:$B$9");
        EXPECT_EQ(name.sheet, name.name == "Local" ? back->sheets[1] : nullptr);
        EXPECT_EQ(name.hidden, name.name == "Total");
    }
    EXPECT_FALSE(back->theme.empty()) << "the library's";
    ASSERT_EQ(back->styles.size(), 2U);
    EXPECT_EQ(back->styles[1].name, "Good one");
    EXPECT_TRUE(back->styles[1].format.font.bold);
    EXPECT_EQ(back->styles[1].settings, book->styles[1].settings);
    Sheet& sheet = *book->sheets[0];
    Sheet& read = *back->sheets[0];
    sheet.forEach(wholeSheet(), [&](int row, int column, const Cell& cell) {
        SCOPED_TRACE(cellName(row, column));
        const Cell* found = read.find(row, column);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->value, cell.value);
        EXPECT_EQ(found->formula, cell.formula);
        EXPECT_EQ(back->formats.at(found->format), book->formats.at(cell.format));
    });
    EXPECT_EQ(read.merges, sheet.merges);
    EXPECT_EQ(read.comments, sheet.comments);
    for (const int column : {1, 2, 3, 4, 5, 6, 8}) {
        EXPECT_EQ(read.columns.at(column).width, sheet.columns.at(column).width) << column;
        EXPECT_EQ(read.columns.at(column).hidden, sheet.columns.at(column).hidden) << column;
    }
    EXPECT_EQ(back->formats.at(read.formatAt(100, 8)).numberFormat, "0%");
    EXPECT_EQ(back->formats.at(read.formatAt(5, 100)).numberFormat, "0%");
    EXPECT_EQ(read.rows.at(3).height, 30.0);
    EXPECT_TRUE(read.rows.at(4).hidden);
    for (const int row : {18, 19, 20, 22, 23})
        EXPECT_EQ(read.rows.at(row).outline, sheet.rows.at(row).outline) << row;
    EXPECT_EQ(read.columns.at(11).outline, sheet.columns.at(11).outline);
    EXPECT_EQ(read.sumsBelow, sheet.sumsBelow);
    EXPECT_EQ(read.links, sheet.links);
    EXPECT_EQ(read.inputRules, sheet.inputRules);
    EXPECT_EQ(read.protection, sheet.protection);
    EXPECT_EQ(read.quiet, sheet.quiet);
    EXPECT_EQ(read.tabColor, sheet.tabColor);
    EXPECT_EQ(read.view, sheet.view);
    EXPECT_EQ(read.autoFilter, sheet.autoFilter);
    EXPECT_EQ(read.page, sheet.page);
    ASSERT_EQ(read.pictures.size(), 1U);
    EXPECT_EQ(read.pictures[0].bytes, sheet.pictures[0].bytes);
    EXPECT_EQ(read.pictures[0].name, "logo");
    EXPECT_EQ(read.pictures[0].row, 14);
    EXPECT_EQ(read.pictures[0].column, 2);
    EXPECT_NEAR(read.pictures[0].leftInCell, 3.0, 0.01);
    EXPECT_NEAR(read.pictures[0].width, 90.0, 0.01);
    EXPECT_NEAR(read.pictures[0].height, 45.0, 0.01);
}

TEST_F(Workbooks, AnotherReaderFindsTheSame) {
    writeWorkbook(*fullWorkbook(), path("a.xlsx"));
    const auto lines = test_support::dumpWorkbook(path("a.xlsx"));
    if (!lines) GTEST_SKIP() << "python3-openpyxl is not installed";
    const char* expected[] = {
        "sheets Sheet1 Board list Sheet3 active Board list",
        "title 楼板",
        "calculated when opened True",
        "name Total Sheet1!$B$2:$B$9",
        "Sheet3 state veryHidden",
        "Sheet1 freeze B3",
        "Sheet1 filter A1:C9",
        "Sheet1 merged C10:E12",
        "Sheet1 page landscape 9 0.5",
        "Sheet1 print ['$A$1:$E$20'] $1:$2",
        "Sheet1 header Boards",
        "Sheet1 column B 20.7109",
        "Sheet1 row 2 30.0",
        "part xl/media/image1.png",
        "Sheet1!A1 value '板 <1> & \"2\"\\nsecond line '",
        "Sheet1!A2 value 12.5",
        "Sheet1!A2 comment Li: measured",
        "Sheet1!A3 value '=A2*2'",
        "Sheet1!B2 value True",
        "Sheet1!A5 value datetime.datetime(2024, 1, 1, 12, 0)",
        "Sheet1!A6 font Arial 14.0 bold italic strike double superscript FFFF0000",
        "Sheet1!A6 fill solid FFFFFF00",
        "Sheet1!A6 align right top 2 0 True False",
        "Sheet1!A7 left thin FF332211",
        "Sheet1!A7 right medium auto",
        "Sheet1!A7 bottom double FF000000",
        "Sheet1!A7 diagonal hair auto",
        "Sheet1!A7 align None None 0 135 False True",
        "Sheet1!A8 align None None 0 255 False False",
    };
    for (const char* line : expected) {
        if (lines->contains(line)) continue;
        const std::string_view wanted = line;
        std::string found;
        for (const std::string& other : *lines) {
            if (other.starts_with(wanted.substr(0, wanted.rfind(' ', 16)))) found += other + "\n";
        }
        ADD_FAILURE() << line << "\nfound:\n" << found;
    }
}

TEST_F(Workbooks, BadFilesAreRefusedInWords) {
    writeWorkbook(*fullWorkbook(), path("good.xlsx"));
    const std::string good = bytesOf("good.xlsx");
    std::string protectedFile = "\xD0\xCF\x11\xE0" + std::string(600, '\0');
    for (const char c : std::string_view("EncryptedPackage")) {
        protectedFile += c;
        protectedFile += '\0';
    }
    store("text.xlsx", "a,b,c\n");
    store("empty.xlsx", "");
    store("cut.xlsx", good.substr(0, good.size() / 2));
    store("protected.xlsx", protectedFile);
    store("old.xls", "\xD0\xCF\x11\xE0" + std::string(600, '\0'));
    store("zip.xlsx", "PK\x05\x06" + std::string(18, '\0'));
    std::string scrambled = good;
    const std::size_t sheet = good.find("xl/worksheets/sheet1.xml");
    for (std::size_t i = sheet + 100; i < sheet + 200; ++i)
        scrambled[i] = static_cast<char>(scrambled[i] ^ 0x55);
    store("scrambled.xlsx", scrambled);
    // The archive's list claims a sheet of 800 MB.
    std::string bomb = good;
    const std::size_t entry = bomb.rfind("xl/worksheets/sheet1.xml") - 46;
    ASSERT_EQ(bomb.substr(entry, 4), "PK\x01\x02");
    bomb.replace(entry + 24, 4, std::string("\0\0\0\x30", 4));
    store("bomb.xlsx", bomb);
    struct Case {
        const char* file;
        const char* reason;
    };
    const Case cases[] = {
        {"text.xlsx", "it is not a workbook"},
        {"empty.xlsx", "it is not a workbook"},
        {"cut.xlsx", "damaged"},
        {"protected.xlsx", "protected by a password"},
        {"old.xls", "of the kind .xls, which takes LibreOffice"},
        {"zip.xlsx", "it is not a workbook"},
        {"scrambled.xlsx", "damaged"},
        {"bomb.xlsx", "absurd size"},
        {"missing.xlsx", "No such file"},
        {".", "it is a folder"},
    };
    for (const Case& c : cases) {
        try {
            (void)readWorkbook(path(c.file));
            ADD_FAILURE() << c.file << " was read";
        } catch (const WorkbookError& error) {
            EXPECT_NE(std::string(error.what()).find(c.reason), std::string::npos) << error.what();
            EXPECT_NE(std::string(error.what()).find(c.file), std::string::npos) << error.what();
        }
    }
}

TEST_F(Workbooks, TellWhatTheyDoNotKeep) {
    writeWorkbook(*fullWorkbook(), path("good.xlsx"));
    struct Case {
        const char* part;
        const char* text; ///< In that part; null for a new part.
        const char* instead;
        const char* phrase; ///< Null when nothing is lost.
    };
    const char* const sheet = "xl/worksheets/sheet1.xml";
    const char* const strings = "xl/sharedStrings.xml";
    const Case cases[] = {
        {sheet, "<sheetData>", "<sheetData>", nullptr},
        {strings, "<t>styled</t>", "<r><rPr><b/></rPr><t>sty</t></r><r><t>led</t></r>",
         "formats of single letters"},
        {strings, "<t>styled</t>", "<t>styled</t><rPh sb=\"0\" eb=\"1\"><t>s</t></rPh>",
         "phonetic guides"},
        {"xl/styles.xml", "<fill><patternFill patternType=\"gray125\"/></fill>",
         "<fill><gradientFill><stop position=\"0\"/></gradientFill></fill>", "colour gradients"},
        {sheet, "<sheetView ", "<sheetView rightToLeft=\"1\" ", "settings of views"},
        {sheet, "state=\"frozen\"", "state=\"split\"", "split windows"},
        {sheet, "</worksheet>", "<cellWatches><cellWatch r=\"A1\"/></cellWatches></worksheet>",
         "watched cells"},
        {sheet, "</worksheet>", "<news/></worksheet>", "contents of an unknown kind"},
        {sheet, "</worksheet>",
         "<mc:AlternateContent><mc:Choice><controls><c/></controls></mc:Choice>"
         "</mc:AlternateContent></worksheet>",
         "controls"},
        {sheet, "</worksheet>",
         "<extLst><ext><x14:sparklineGroups><g/></x14:sparklineGroups></ext>"
         "</extLst></worksheet>",
         "sparklines"},
        {sheet, "</worksheet>", "<pageSetup draft=\"1\"/></worksheet>", "settings of printing"},
        {sheet, "<sheetProtection ", "<sheetProtection hashValue=\"x\" ", "passwords of sheets"},
        {"xl/workbook.xml", "<calcPr ", "<calcPr iterate=\"1\" ", "settings of calculation"},
        {"xl/styles.xml", "</cellStyles>", "</cellStyles><tableStyles><t/></tableStyles>",
         "styles of tables"},
        {"xl/comments1.xml", "<t>measured</t>",
         "<rPr/><t>meas</t></r><r><rPr><b/></rPr><t>ured</t>", "formats of letters in comments"},
        {"xl/charts/chart1.xml", nullptr, "<c/>", "charts"},
        {"xl/ctrlProps/c.xml", nullptr, "<c/>", "controls"},
        {"xl/new/c.xml", nullptr, "<c/>", "contents of an unknown kind"},
        {"docProps/custom.xml", nullptr, "<Properties/>", nullptr},
        {"docProps/custom.xml", nullptr, "<Properties><property/></Properties>",
         "properties of its own"},
        {"_xmlsignatures/sig1.xml", nullptr, "<Signature/>", "signatures"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.instead);
        test_support::patchWorkbook(path("good.xlsx"), path("patched.xlsx"), c.part, c.text,
                                    c.instead);
        const auto expected =
            c.phrase == nullptr ? std::vector<std::string>() : std::vector<std::string>{c.phrase};
        EXPECT_EQ(readWorkbook(path("patched.xlsx"))->leftOut, expected);
    }
}

TEST_F(Workbooks, AreReadInOtherDialects) {
    auto book = newWorkbook(1);
    const auto dated = [&](const char* code) {
        return book->formats.changed(kDefaultFormat,
                                     [&](CellFormat& format) { format.numberFormat = code; });
    };
    Sheet& sheet = *book->sheets[0];
    sheet.at(1, 1).value = 1.25;
    sheet.at(1, 1).format = dated("yyyy-mm-dd");
    sheet.at(2, 1).value = 1.25;
    sheet.at(2, 1).format = dated("[h]:mm");
    sheet.at(3, 1).value = 1.25;
    writeWorkbook(*book, path("good.xlsx"));
    // Days that count from 1904; lengths of time do not.
    test_support::patchWorkbook(path("good.xlsx"), path("1904.xlsx"), "xl/workbook.xml",
                                "<workbookPr ", "<workbookPr date1904=\"1\" ");
    const auto since1904 = readWorkbook(path("1904.xlsx"));
    EXPECT_EQ(since1904->sheets[0]->find(1, 1)->value, CellValue(1463.25));
    EXPECT_EQ(since1904->sheets[0]->find(2, 1)->value, CellValue(1.25));
    test_support::patchWorkbook(path("good.xlsx"), path("iso.xlsx"), "xl/worksheets/sheet1.xml",
                                "<c r=\"A3\"><v>1.25</v>",
                                "<c r=\"A3\" t=\"d\"><v>2024-01-01T12:00:00</v>");
    EXPECT_EQ(readWorkbook(path("iso.xlsx"))->sheets[0]->find(3, 1)->value, CellValue(45292.5));
    test_support::patchWorkbook(path("good.xlsx"), path("lacking.xlsx"),
                                "xl/_rels/workbook.xml.rels", "worksheets/sheet1.xml",
                                "worksheets/sheet9.xml");
    EXPECT_THROW((void)readWorkbook(path("lacking.xlsx")), WorkbookError);
}

TEST_F(Workbooks, FailedSavesLeaveTheOldFile) {
    store("a.xlsx", "old");
    chmod(path("a.xlsx").c_str(), 0444);
    EXPECT_THROW(writeWorkbook(*newWorkbook(1), path("a.xlsx")), WorkbookError);
    EXPECT_EQ(bytesOf("a.xlsx"), "old");
    EXPECT_THROW(writeWorkbook(*newWorkbook(1), path("no/b.xlsx")), WorkbookError);
    chmod(path("a.xlsx").c_str(), 0644);
    auto book = newWorkbook(1);
    book->sheets[0]->at(1, 1).value = std::string(40000, 'x');
    EXPECT_THROW(writeWorkbook(*book, path("a.xlsx")), WorkbookError) << "too long for a cell";
    EXPECT_EQ(bytesOf("a.xlsx"), "old");
    EXPECT_EQ(files(), 1U);
}

TEST(Formulas, ReferencesMoveWhenCopied) {
    struct Case {
        const char* formula;
        int down;
        int right;
        const char* copied;
    };
    const Case cases[] = {
        {"A1+$B$2+C$3+$D4", 2, 1, "B3+$B$2+D$3+$D6"},
        {"SUM(A1:B2)*LOG10(A1)", 1, 0, "SUM(A2:B3)*LOG10(A2)"},
        {"\"A1\"&'A1 B'!A1&Sheet2!A1", 1, 0, "\"A1\"&'A1 B'!A2&Sheet2!A2"},
        {"SUM(A:B)+SUM(2:3)", 1, 1, "SUM(B:C)+SUM(3:4)"},
        {"A1_x+XFE1+MAX1(2)", 1, 0, "A1_x+XFE1+MAX1(2)"},
        {"A1", -1, 0, "#REF!"},
        {"Table[A1]+1.5E3", 1, 1, "Table[A1]+1.5E3"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(copiedFormula(c.formula, c.down, c.right), c.copied);
}

TEST(Areas, AreReadAndWritten) {
    struct Case {
        const char* text;
        std::optional<Area> area;
    };
    const Case cases[] = {
        {"b3", Area{3, 2, 3, 2}},
        {"$D$9:A2", Area{2, 1, 9, 4}},
        {"C:A", Area{1, 1, kRows, 3}},
        {"7:5", Area{5, 1, 7, kColumns}},
        {"XFD1048576", Area{kRows, kColumns, kRows, kColumns}},
        {"XFE1", {}},
        {"A1048577", {}},
        {"A0", {}},
        {"A", {}},
        {"A1:B", {}},
        {"", {}},
        {"A1B", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(parseArea(c.text), c.area) << c.text;
    EXPECT_EQ(areaText({1, 1, kRows, 3}, true), "$A:$C");
    EXPECT_EQ(areaText({5, 1, 7, kColumns}, false), "5:7");
    EXPECT_EQ(areaText({2, 27, 3, 703}, true), "$AA$2:$AAA$3");
}

TEST(NumberFormats, ShowDates) {
    for (const char* code : {"yyyy/m/d", "h:mm", "[h]:mm", "[$-804]yyyy\"年\"", "[Red]mm-dd"})
        EXPECT_TRUE(showsDates(code)) << code;
    for (const char* code : {"General", "0.00", "@", "\"days\" 0", "0;d", "#,##0_);[Red]0", "\\d0"})
        EXPECT_FALSE(showsDates(code)) << code;
}

TEST(Sheets, RowsComeAndGo) {
    Sheet sheet;
    sheet.at(1, 1).value = 1.0;
    sheet.at(2, 1).value = 2.0;
    sheet.at(2, 3).value = 23.0;
    sheet.comments[{2, 1}] = {"two", "", false};
    sheet.merges = {{4, 1, 5, 2}};
    sheet.rows.change(2, 2, [](RowProperties& r) { r.height = 40.0; });
    ASSERT_TRUE(sheet.insertCells({2, 1, 3, kColumns}, true));
    EXPECT_EQ(std::get<double>(sheet.find(4, 3)->value), 23.0);
    EXPECT_EQ(sheet.rows.at(4).height, 40.0);
    EXPECT_FALSE(sheet.rows.at(2).height) << "new rows are like the one before";
    EXPECT_TRUE(sheet.comments.contains({4, 1}));
    EXPECT_EQ(sheet.merges.front(), (Area{6, 1, 7, 2}));
    sheet.deleteCells({1, 1, 3, kColumns}, true);
    EXPECT_EQ(std::get<double>(sheet.find(1, 1)->value), 2.0);
    EXPECT_EQ(sheet.rows.at(1).height, 40.0);
    // Only some columns.
    ASSERT_TRUE(sheet.insertCells({1, 1, 1, 1}, false));
    EXPECT_EQ(std::get<double>(sheet.find(1, 2)->value), 2.0);
    EXPECT_EQ(std::get<double>(sheet.find(1, 4)->value), 23.0);
    sheet.at(kRows, 1).value = 1.0;
    EXPECT_FALSE(sheet.insertCells({1, 1, 1, kColumns}, true)) << "the last row is in use";
}

} // namespace
