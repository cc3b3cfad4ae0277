// What the library finds is what the stated procedure finds.
#include <gtest/gtest.h>

#include "table/random_table.h"
#include "table/table_fixture.h"

namespace {

using test_support::listOf;

class RandomTables : public test_support::TableTest {
protected:
    void compare(const test_support::RandomTable& random) {
        plain::Table expected;
        const bool isTable = plain::analyseTable(random.lines, random.texts, expected);
        for (const plain::Line& line : random.lines)
            drawLine(line.start, line.end);
        for (const plain::Text& text : random.texts)
            drawText(text);
        CGridToCadTable table;
        ASSERT_EQ(table.AnalyseTable(drawn_), isTable ? 1 : 0);
        EXPECT_TRUE(drawn_.isEmpty());

        const TableModel& model = table.GetModel();
        EXPECT_EQ(model.rowLines, expected.rowLines);
        EXPECT_EQ(model.columnLines, expected.columnLines);
        EXPECT_EQ(listOf(model.columnWidths), expected.widths);
        EXPECT_EQ(listOf(model.rowHeights), expected.heights);
        EXPECT_EQ(listOf(model.mergeColumns), expected.mergeColumns);
        EXPECT_EQ(listOf(model.mergeRows), expected.mergeRows);
        EXPECT_EQ(listOf(model.mergeMoreColumns), expected.mergeMoreColumns);
        EXPECT_EQ(listOf(model.mergeMoreRows), expected.mergeMoreRows);
        ASSERT_EQ(model.texts.GetSize(), static_cast<INT_PTR>(expected.texts.size()));
        for (std::size_t i = 0; i < expected.texts.size(); ++i)
            EXPECT_EQ(model.texts[static_cast<INT_PTR>(i)], expected.texts[i]);
        EXPECT_EQ(listOf(model.colors), expected.colors);
        EXPECT_EQ(listOf(model.textHeights), expected.textHeights);
        tables_ += isTable ? 1 : 0;
        merged_ += expected.mergeRows.empty() ? 0 : 1;
        for (const CString& text : expected.texts)
            texts_ += text.IsEmpty() ? 0 : 1;
    }

    int tables_ = 0;
    int merged_ = 0;
    int texts_ = 0;
};

TEST_F(RandomTables, AreReadAsStated) {
    constexpr unsigned kTables = 4000;
    for (unsigned seed = 1; seed <= kTables && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        compare(test_support::TableMaker(seed).make());
    }
    // The comparison is worth something only when much is found.
    EXPECT_GT(tables_, 3000);
    EXPECT_GT(merged_, 1000);
    EXPECT_GT(texts_, 3000);
}

} // namespace
