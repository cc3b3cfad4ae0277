#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <sys/wait.h>
#include <unistd.h>

#include "excel/full_workbook.h"
#include "excel/office_engine.h"
#include "excel/workbook_error.h"
#include "support/temporary_folder.h"
#include "support/workbook_dump.h"
#include "support/workbook_patch.h"

using namespace headless::excel;
using excel_test::fullWorkbook;

namespace {

class LibreOffice : public testing::Test {
protected:
    void SetUp() override {
#ifndef ORN_WITH_OFFICE
        GTEST_SKIP() << "libreoffice-calc-nogui and libreoffice-dev are not installed";
#endif
    }
    [[nodiscard]] std::string path(const std::string& name) const {
        return (folder_.path() / name).string();
    }
    void store(const char* name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    /// A program in the place of the office's.
    std::string script(const char* name, const char* line) const {
        store(name, std::string("#!/bin/sh\n") + line + "\n");
        std::filesystem::permissions(path(name), std::filesystem::perms::owner_all);
        return path(name);
    }
    /// What saving an old file fails with; empty when it does not.
    static std::string failureOf(Engine& engine, const std::string& file) {
        try {
            (void)engine.save(*newWorkbook(1), file, FileKind::kXls);
        } catch (const WorkbookError& error) {
            return error.what();
        }
        return {};
    }

    test_support::TemporaryFolder folder_;
    std::shared_ptr<Engine> engine_ = officeEngine();
};

/// Every kind has its own way to say the same; these are the same to a reader.
void expectSameLooks(const CellFormat& found, const CellFormat& wanted) {
    EXPECT_EQ(found.font.name, wanted.font.name);
    EXPECT_EQ(found.font.size, wanted.font.size);
    EXPECT_EQ(found.font.bold, wanted.font.bold);
    EXPECT_EQ(found.font.italic, wanted.font.italic);
    EXPECT_EQ(found.font.strikeout, wanted.font.strikeout);
    EXPECT_EQ(found.font.underline, wanted.font.underline);
    EXPECT_EQ(found.font.script, wanted.font.script);
    EXPECT_EQ(found.font.color.value_or(0), wanted.font.color.value_or(0));
    if (wanted.fill.pattern <= Pattern::kSolid) {
        EXPECT_EQ(found.fill, wanted.fill);
    }
    for (BorderLine Borders::*line :
         {&Borders::left, &Borders::right, &Borders::top, &Borders::bottom, &Borders::diagonal}) {
        const BorderLine& other = found.borders.*line;
        EXPECT_EQ(other.style, (wanted.borders.*line).style);
        EXPECT_EQ(other.color.value_or(0), (wanted.borders.*line).color.value_or(0));
    }
    EXPECT_EQ(found.borders.diagonalUp, wanted.borders.diagonalUp);
    EXPECT_EQ(found.alignment.rotation, wanted.alignment.rotation);
    EXPECT_EQ(found.alignment.shrink, wanted.alignment.shrink);
    EXPECT_EQ(found.alignment.indent, wanted.alignment.indent);
    EXPECT_EQ(found.locked, wanted.locked);
}

void expectSameSheet(Workbook& found, Workbook& wanted) {
    Sheet& sheet = *wanted.sheets[0];
    Sheet& read = *found.sheets[0];
    sheet.forEach(wholeSheet(), [&](int row, int column, const Cell& cell) {
        SCOPED_TRACE(cellName(row, column));
        const Cell* other = read.find(row, column);
        ASSERT_NE(other, nullptr);
        EXPECT_EQ(other->value, cell.value);
        if (!std::holds_alternative<CellError>(cell.value)) { // they may become formulas
            EXPECT_EQ(other->formula, cell.formula);
        }
        expectSameLooks(found.formats.at(other->format), wanted.formats.at(cell.format));
    });
    EXPECT_EQ(read.merges, sheet.merges);
    EXPECT_EQ(read.columns.at(3).width, sheet.columns.at(3).width);
    EXPECT_TRUE(read.columns.at(6).hidden);
    EXPECT_EQ(read.rows.at(3).height, 30.0);
    EXPECT_TRUE(read.rows.at(4).hidden);
    EXPECT_EQ(found.formats.at(read.formatAt(100, 8)).numberFormat, "0%");
    EXPECT_EQ(read.comments.at({2, 1}).text, "measured");
    EXPECT_TRUE(read.comments.at({2, 1}).visible);
    EXPECT_EQ(read.rows.at(20).outline, sheet.rows.at(20).outline);
    EXPECT_TRUE(std::ranges::any_of(
        read.links, [](const Link& link) { return link.target.ends_with("plans/a.xlsx"); }));
    EXPECT_EQ(read.inputRules.size(), sheet.inputRules.size());
    EXPECT_EQ(read.page.rowBreaks, sheet.page.rowBreaks);
    EXPECT_EQ(read.tabColor, sheet.tabColor);
    EXPECT_EQ(read.autoFilter, sheet.autoFilter);
    EXPECT_TRUE(read.page.landscape);
    EXPECT_TRUE(read.page.fitToPages);
    EXPECT_EQ(read.page.paper, 9);
    EXPECT_EQ(read.page.printArea, sheet.page.printArea);
    EXPECT_EQ(read.page.titleRows, sheet.page.titleRows);
    EXPECT_NE(read.page.header.find("Boards"), std::string::npos);
    ASSERT_EQ(read.pictures.size(), 1U);
    EXPECT_EQ(read.pictures[0].column, 2);
    EXPECT_NEAR(read.pictures[0].width, 90.0, 0.1);
    EXPECT_NEAR(read.pictures[0].height, 45.0, 0.1);
}

TEST_F(LibreOffice, BringsOtherKindsBack) {
    const auto book = fullWorkbook();
    book->sheets[0]->protection.reset(); // keeps fonts from being matched
    for (const FileKind kind : {FileKind::kXls, FileKind::kOds}) {
        const std::string file = path(std::string("a") + endingOf(kind));
        SCOPED_TRACE(endingOf(kind));
        const std::vector<std::string> lost = engine_->save(*book, file, kind);
        for (const char* phrase :
             {"hidden names", "sheets hidden from users", "fill patterns",
              "links of cells without text", "sums before their groups", "tips of links"})
            EXPECT_EQ(std::ranges::count(lost, phrase), 1) << phrase;
        for (const char* phrase : {"frozen panes", "authors of comments"})
            EXPECT_EQ(std::ranges::count(lost, phrase), kind == FileKind::kXls ? 1 : 0) << phrase;
        EXPECT_EQ(kindOfContent(file), kind);
        const auto back = engine_->open(file);
        EXPECT_TRUE(back->leftOut.empty()) << testing::PrintToString(back->leftOut);
        ASSERT_EQ(back->sheets.size(), 3U);
        EXPECT_EQ(back->sheets[1]->name, "Board list");
        EXPECT_NE(back->sheets[2]->visibility, Visibility::kVisible);
        EXPECT_EQ(back->properties.title, "楼板");
        ASSERT_EQ(back->names.size(), 2U);
        for (const DefinedName& name : back->names) {
            EXPECT_EQ(name.refersTo,
                      name.name == "Local" ? "'Board list'!$A$1" : "Sheet1!$B$2:$B$9");
        }
        expectSameSheet(*back, *book);
        if (kind == FileKind::kOds) {
            EXPECT_EQ(back->sheets[0]->view, book->sheets[0]->view);
            EXPECT_EQ(back->activeSheet, 1U);
            EXPECT_EQ(back->sheets[0]->comments, book->sheets[0]->comments);
        }
    }
}

TEST_F(LibreOffice, SeesTheViewsOfOtherPrograms) {
    const auto item = [](const char* name, const char* type, const char* value) {
        return std::string("<config:config-item config:name=\"") + name + "\" config:type=\"" +
               type + "\">" + value + "</config:config-item>";
    };
    const std::string views =
        "<config:config-item-map-indexed config:name=\"Views\"><config:config-item-map-entry>" +
        item("ViewId", "string", "view1") + item("ActiveTable", "string", "Sheet2") +
        "<config:config-item-map-named config:name=\"Tables\">"
        "<config:config-item-map-entry config:name=\"Sheet1\">" +
        item("VerticalSplitMode", "short", "2") + item("VerticalSplitPosition", "int", "3") +
        item("PositionBottom", "int", "3") + item("ZoomValue", "int", "150") +
        "</config:config-item-map-entry></config:config-item-map-named>"
        "</config:config-item-map-entry></config:config-item-map-indexed>";
    (void)engine_->save(*newWorkbook(2), path("a.ods"), FileKind::kOds);
    const std::string next = "</config:config-item-set><config:config-item-set";
    test_support::patchWorkbook(path("a.ods"), path("b.ods"), "settings.xml", next.c_str(),
                                views + next);
    const auto book = engine_->open(path("b.ods"));
    EXPECT_EQ(book->sheets[0]->view, (SheetView{3, 0, 150, true}));
    EXPECT_EQ(book->sheets[1]->view, SheetView());
    EXPECT_EQ(book->activeSheet, 1U);
}

TEST_F(LibreOffice, CalculatesFormulas) {
    const auto book = newWorkbook(1);
    Sheet& sheet = *book->sheets[0];
    sheet.at(1, 1).value = 2.0;
    sheet.at(2, 1).formula = "A1*21";
    sheet.at(3, 1).formula = "\"板\"&A2";
    sheet.at(4, 1).formula = "1/(A1-2)";
    sheet.at(5, 1).formula = "A2>A1";
    engine_->calculate(*book);
    EXPECT_EQ(sheet.find(2, 1)->value, CellValue(42.0));
    EXPECT_EQ(sheet.find(3, 1)->value, CellValue(std::string("板42")));
    EXPECT_EQ(sheet.find(4, 1)->value, CellValue(CellError{"#DIV/0!"}));
    EXPECT_EQ(sheet.find(5, 1)->value, CellValue(true));
    EXPECT_EQ(sheet.find(2, 1)->formula, "A1*21") << "formulas stay as they were";

    EXPECT_TRUE(engine_->save(*book, path("a.xlsx"), FileKind::kXlsx).empty());
    const auto lines = test_support::dumpWorkbook(path("a.xlsx"));
    if (!lines) GTEST_SKIP() << "python3-openpyxl is not installed";
    EXPECT_TRUE(lines->contains("Sheet1!A2 result 42"));
    EXPECT_TRUE(lines->contains("Sheet1!A3 result '板42'"));
}

TEST_F(LibreOffice, RefusesInWords) {
    store("text.xls", "a,b,c\n");
    store("cut.xls", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(600, '\0'));
    store("cut.ods", "PK\x03\x04" + std::string(26, '\0') +
                         "mimetypeapplication/vnd.oasis.opendocument.spreadsheet");
    for (const auto& [file, reason] :
         {std::pair("text.xls", "it is not a workbook"), std::pair("cut.xls", "damaged"),
          std::pair("cut.ods", "damaged"), std::pair("missing.ods", "No such file")}) {
        try {
            (void)engine_->open(path(file));
            ADD_FAILURE() << file << " was read";
        } catch (const WorkbookError& error) {
            const std::string text = error.what();
            EXPECT_NE(text.find(std::string(file) + " cannot be opened: "), std::string::npos)
                << text;
            EXPECT_NE(text.find(reason), std::string::npos) << text;
        }
    }
    auto tall = newWorkbook(1);
    tall->sheets[0]->at(65537, 1).value = 1.0;
    EXPECT_THROW((void)engine_->save(*tall, path("tall.xls"), FileKind::kXls), WorkbookError);
    EXPECT_FALSE(std::filesystem::exists(path("tall.xls")));
}

TEST_F(LibreOffice, SaysWhyItDoesNotStart) {
    struct Case {
        std::string program;
        const char* reason;
    };
    const Case cases[] = {
        {path("nowhere"), "LibreOffice is not installed: there is no "},
        {script("ends", "exit 3"), "LibreOffice did not start: it ended with status 3"},
        {script("hangs", "exec sleep 60"), "LibreOffice did not answer in 1 s after its start"},
    };
    for (const Case& c : cases) {
        OfficeOptions options;
        options.program = c.program;
        options.startLimit = std::chrono::seconds(1);
        const auto engine = officeEngine(options);
        const std::string failure = failureOf(*engine, path("a.xls"));
        EXPECT_NE(failure.find(c.reason), std::string::npos) << failure;
    }
}

/// The office that this process started last.
pid_t officeOfThis() {
    std::ifstream children("/proc/self/task/" + std::to_string(getpid()) + "/children");
    pid_t last = 0;
    for (pid_t child = 0; children >> child;)
        last = child;
    return last;
}

/// A folder for temporary files while in scope.
class TemporaryFiles {
public:
    explicit TemporaryFiles(const std::string& folder) {
        if (const char* before = std::getenv("TMPDIR")) before_ = before;
        std::filesystem::create_directory(folder);
        setenv("TMPDIR", folder.c_str(), 1);
    }
    ~TemporaryFiles() { before_ ? setenv("TMPDIR", before_->c_str(), 1) : unsetenv("TMPDIR"); }
    TemporaryFiles(const TemporaryFiles&) = delete;
    TemporaryFiles& operator=(const TemporaryFiles&) = delete;

private:
    std::optional<std::string> before_;
};

TEST_F(LibreOffice, ComesBackAfterItsEnd) {
    const std::string file = path("a.xls");
    const TemporaryFiles temporary(path("own"));
    ASSERT_EQ(failureOf(*engine_, file), "");
    const auto folder = std::filesystem::directory_iterator(path("own"))->path().filename();
    const std::string socket = "/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_" + folder.string();
    EXPECT_TRUE(std::filesystem::exists(socket));
    const pid_t first = officeOfThis();
    ASSERT_GT(first, 0);
    kill(first, SIGKILL);
    siginfo_t ended{};
    waitid(P_PID, static_cast<id_t>(first), &ended, WEXITED | WNOWAIT);
    EXPECT_EQ(failureOf(*engine_, file), "") << "somebody ended it";
    engine_->rest();
    EXPECT_EQ(officeOfThis(), 0) << "it was told to end";
    EXPECT_TRUE(std::filesystem::is_empty(path("own"))) << "nothing is left, whoever ended it";
    EXPECT_FALSE(std::filesystem::exists(socket));
}

TEST_F(LibreOffice, IsEndedWhenItDoesNotAnswer) {
    OfficeOptions options;
    options.workLimit = std::chrono::seconds(5);
    const auto engine = officeEngine(options);
    ASSERT_EQ(failureOf(*engine, path("a.xls")), "");
    kill(officeOfThis(), SIGSTOP);
    EXPECT_EQ(failureOf(*engine, path("a.xls")),
              path("a.xls") +
                  " cannot be written: LibreOffice did not answer in 5 s and was ended");
    EXPECT_EQ(failureOf(*engine, path("a.xls")), "") << "a new one is started";
}

} // namespace
