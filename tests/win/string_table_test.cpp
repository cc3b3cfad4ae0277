#include "win/string_table.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using headless::StringTable;

namespace {

TEST(StringTable, ReadsWhatResourceCompilersAccept) {
    const StringTable table = StringTable::parse("\xEF\xBB\xBF"
                                                 R"rc(
// A script. STRINGTABLE BEGIN 1 "not this" END
#include <windows.h>
#define IDS_HELLO 101
#define IDS_WALL (102)
#define IDS_HEX 0x100L
IDD_ABOUT DIALOG 0, 0, 10, 10
BEGIN
    LTEXT "no string", 7
END
STRINGTABLE DISCARDABLE
LANGUAGE 4, 2
BEGIN
    IDS_HELLO   "你好, ""world"""
    IDS_WALL,   L"墙\nline\tend\\"   /* a comment
                                        over lines */
    IDS_HEX     "\x4E2d\101"
    7           ""
    IDS_UNKNOWN "nobody can ask for this"
    8           "after the unknown"
END
STRINGTABLE { 9 "braces" 8 "again" }
STRINGTABLE BEGIN 10 "no end)rc",
                                                 ".");
    const struct {
        UINT id;
        std::optional<std::wstring_view> text;
    } cases[] = {
        {101, L"你好, \"world\""},
        {102, L"墙\nline\tend\\"},
        {0x100, L"中A"},
        {7, L""},
        {8, L"again"},
        {9, L"braces"},
        {10, L"no end"},
        {1, {}},
        {0, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(table.find(c.id), c.text) << c.id;
}

TEST(StringTable, SymbolsFromIncludedHeaders) {
    char pattern[] = "/tmp/string-table-XXXXXX";
    const std::filesystem::path folder = mkdtemp(pattern);
    std::ofstream(folder / "resource.h") << "#include \"x.rc\"\n#define IDS_A 5\n";
    std::ofstream(folder / "x.rc") << "#include \"resource.h\"\n#include \"missing.h\"\n"
                                      "STRINGTABLE\nBEGIN\nIDS_A \"five\"\nEND\n";
    EXPECT_EQ(StringTable::read((folder / "x.rc").string()).find(5), L"five");
    EXPECT_EQ(StringTable::read((folder / "none.rc").string()).find(5), std::nullopt);
    std::filesystem::remove_all(folder);
}

} // namespace
