#include "OrnBoard/tables.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <dbents.h>

#include "OrnBoard/tables_report.h"
#include "support/session_fixture.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class Tables : public test_support::SessionTest {
protected:
    /// Two rows of two cells at (x, 0), 100 by 20, with a word and a number in the second row.
    void drawTable(double x, const ACHAR* layer, const ACHAR* number = L"7") {
        const auto onLayer = [&](std::unique_ptr<AcDbEntity> entity) {
            entity->setLayer(addLayer(layer));
            add(std::move(entity));
        };
        for (const double y : {0.0, 10.0, 20.0})
            onLayer(std::make_unique<AcDbLine>(AcGePoint3d(x, y, 0), AcGePoint3d(x + 100, y, 0)));
        for (const double step : {0.0, 50.0, 100.0})
            onLayer(std::make_unique<AcDbLine>(AcGePoint3d(x + step, 0, 0),
                                               AcGePoint3d(x + step, 20, 0)));
        onLayer(
            std::make_unique<AcDbText>(AcGePoint3d(x + 5, 3, 0), layer, AcDbObjectId::kNull, 3));
        onLayer(
            std::make_unique<AcDbText>(AcGePoint3d(x + 60, 3, 0), number, AcDbObjectId::kNull, 3));
    }
    CString path(const char* name) const { return (folder_.path() / name).wstring().c_str(); }
    std::string read(const char* name) const {
        std::ifstream file(folder_.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::ptrdiff_t files() const {
        return std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator());
    }

    test_support::TemporaryFolder folder_;
};

TEST_F(Tables, AreFoundWhereTheyAreLookedFor) {
    drawTable(0, L"LIST");
    drawTable(200, L"OTHER");
    EXPECT_EQ(board::drawnTables(database(), {}).size(), 2U);
    const auto byLayer = board::drawnTables(database(), {.layers = {L"other"}});
    ASSERT_EQ(byLayer.size(), 1U);
    EXPECT_EQ(byLayer[0]->GetCell(2, 1).text, L"OTHER");
    const auto byWindow =
        board::drawnTables(database(), {.window = AcDbExtents2d({-1, -1}, {150, 30})});
    ASSERT_EQ(byWindow.size(), 1U);
    EXPECT_EQ(byWindow[0]->GetCell(2, 1).text, L"LIST");
    EXPECT_TRUE(
        board::drawnTables(database(), {.window = AcDbExtents2d({0, 0}, {90, 30})}).empty());
    EXPECT_TRUE(board::drawnTables(nullptr, {}).empty());
    EXPECT_EQ(board::tablesReport(byLayer), L"2 rows, 2 columns\n\nOTHER  7\n");
    EXPECT_EQ(board::tablesReport({}), L"No table.\n");
}

TEST_F(Tables, AreWrittenWholeOrNotAtAll) {
    drawTable(0, L"LIST", L"1,5");
    const auto tables = board::drawnTables(database(), {});
    EXPECT_EQ(board::writeTables(tables, path("t.CSV")), L"");
    EXPECT_EQ(read("t.CSV"), ",\nLIST,\"1,5\"\n");
    EXPECT_EQ(board::writeTables(tables, path("t.html")), L"");
    EXPECT_EQ(board::writeTables(tables, path("t.json")), L"");
    EXPECT_EQ(board::writeTables(tables, path("") + L"表.xlsx"), L"");
    EXPECT_EQ(read("表.xlsx").substr(0, 2), "PK");
    EXPECT_EQ(files(), 4);

    std::ofstream(folder_.path() / "kept.csv") << "old";
    fs::permissions(folder_.path() / "kept.csv", fs::perms::owner_read);
    fs::create_directory(folder_.path() / "folder.csv");
    for (const char* name : {"kept.csv", "none/t.csv", "folder.csv", "none/t.xlsx", "t.txt", "t"}) {
        const CString problem = board::writeTables(tables, path(name));
        EXPECT_GE(problem.Find(path(name)), 0) << "names the file";
        EXPECT_GT(problem.GetLength(), path(name).GetLength() + 2) << "and says why";
    }
    EXPECT_EQ(read("kept.csv"), "old");
    EXPECT_EQ(files(), 6);
    EXPECT_TRUE(session().messageBoxes().empty());

    // What only another application writes is told of the file that was asked for.
    EXPECT_EQ(board::writeTables(tables, path("t.ods")),
              path("t.ods") + L": the spreadsheet was not written");
    ASSERT_EQ(session().messageBoxes().size(), 1U);
    EXPECT_TRUE(session().messageBoxes()[0].starts_with(path("t.ods").GetString()));
    EXPECT_EQ(files(), 6);
}

} // namespace
