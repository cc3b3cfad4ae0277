// Cutting files into records: line ends, blanks, comments, damage, and where each record stands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dxf/record_scanner.h"

namespace headless {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Scan {
    std::vector<std::string> records; // "LINE 8=0 10=1.5"
    std::vector<std::uint32_t> places;
    std::vector<std::string> spans;
    std::vector<std::string> findings;
    std::string failure;
    bool lastCutOff = false;
};

std::string shown(const DxfTag& tag) {
    const std::string code = std::to_string(tag.code) + "=";
    if (tag.kind == DxfTag::Kind::kInteger) return code + std::to_string(tag.integer());
    if (tag.kind == DxfTag::Kind::kReal) return code + std::to_string(tag.real());
    return code + std::string(tag.bytes, tag.length);
}

Scan scan(const std::string& bytes) {
    Scan result;
    DxfReadReport report;
    const auto scanner = RecordScanner::make(bytes, report);
    ScannedRecord record;
    while (scanner->next(record)) {
        std::string text(record.name);
        for (const DxfTag& tag : record.tags)
            text.append(" ").append(shown(tag));
        result.records.push_back(text);
        result.places.push_back(record.place);
        result.spans.push_back(bytes.substr(record.begin, record.end - record.begin));
        result.lastCutOff = record.cutOff;
    }
    result.failure = scanner->failure();
    for (const DxfFinding& finding : report.findings()) {
        result.findings.push_back(report.describe(finding));
    }
    return result;
}

TEST(RecordScanner, ReadsLinesHoweverTheyEnd) {
    struct Case {
        const char* name;
        std::string bytes;
        std::vector<std::string> records;
    };
    const std::vector<std::string> line{"LINE 8=0 10=1.5", "EOF"};
    const Case cases[] = {
        {"line feeds", "0\nLINE\n8\n0\n10\n1.5\n0\nEOF\n", line},
        {"carriage returns and line feeds", "0\r\nLINE\r\n8\r\n0\r\n10\r\n1.5\r\n0\r\nEOF\r\n",
         line},
        {"carriage returns alone", "0\rLINE\r8\r0\r10\r1.5\r0\rEOF\r", line},
        {"padded codes", "  0\nLINE\n  8\n0\n 10 \n1.5\n\t0\nEOF\n", line},
        {"no line end behind the last value", "0\nLINE\n8\n0\n10\n1.5\n0\nEOF", line},
        {"byte order mark",
         "\xEF\xBB\xBF"
         "0\nLINE\n8\n0\n10\n1.5\n0\nEOF\n",
         line},
        {"blank lines at the beginning", "\n  \n0\nLINE\n8\n0\n10\n1.5\n0\nEOF\n", line},
        {"comments",
         "999\nmade by hand\n0\nLINE\n999\n0\n8\n0\n10\n1.5\n0\nEOF\n",
         {"", "LINE 8=0 10=1.5", "EOF"}},
        {"blanks of a text are its own", "0\nTEXT\n1\n  two \n0\nEOF\n", {"TEXT 1=  two ", "EOF"}},
        {"empty value", "0\nTEXT\n1\n\n0\nEOF\n", {"TEXT 1=", "EOF"}},
        {"negative code", "0\nX\n-3\nv\n0\nEOF\n", {"X -3=v", "EOF"}},
        {"groups before the first record", "9\n$A\n0\nEOF\n", {" 9=$A", "EOF"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Scan result = scan(c.bytes);
        EXPECT_EQ(result.records, c.records);
        EXPECT_THAT(result.findings, ElementsAre());
    }
}

TEST(RecordScanner, SaysWhereRecordsStand) {
    const Scan result = scan("999\nnote\n0\nLINE\n8\n0\n999\nwithin\n0\nARC\n0\nEOF\n");
    EXPECT_THAT(result.places, ElementsAre(1, 3, 9, 11));
    EXPECT_THAT(result.spans,
                ElementsAre("999\nnote\n", "0\nLINE\n8\n0\n999\nwithin\n", "0\nARC\n", "0\nEOF\n"));
}

TEST(RecordScanner, GoesOnBehindDamage) {
    struct Case {
        const char* name;
        std::string bytes;
        std::vector<std::string> records;
        std::string finding;
    };
    const Case cases[] = {
        {"a text broken in two lines",
         "0\nTEXT\n1\nhalf\nother half\n8\n0\n10\n1\n0\nEOF\n",
         {"TEXT 1=half 8=0 10=1", "EOF"},
         "line 5: \"other half\" is no group code; skipped"},
        {"a damaged code",
         "0\nLINE\n8\n0\n1x\n5.5\n20\n2\n0\nEOF\n",
         {"LINE 8=0 20=2", "EOF"},
         "line 5: \"1x\" is no group code; skipped"},
        {"a code beyond the largest",
         "0\nLINE\n5000\n1\n20\n2\n0\nEOF\n",
         {"LINE 20=2", "EOF"},
         "line 3: \"5000\" is no group code; skipped"},
        {"a stretch of rubbish",
         "0\nLINE\n8\n0\n\x01\x02\n\x03\n?\n!\n20\n2\n0\nEOF\n",
         {"LINE 8=0 20=2", "EOF"},
         "line 5: \"??\" is no group code; skipped"},
        {"a blank line too many",
         "0\nLINE\n8\n0\n\n20\n2\n0\nEOF\n",
         {"LINE 8=0 20=2", "EOF"},
         "line 5: \"\" is no group code; skipped"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Scan result = scan(c.bytes);
        EXPECT_EQ(result.records, c.records);
        EXPECT_THAT(result.findings, ElementsAre(c.finding));
    }
}

TEST(RecordScanner, NoticesAFileThatIsCutOff) {
    for (const char* const bytes :
         {"0\nLINE\n8\n0\n1", "0\nLINE\n8\n0\n10\n", "0\nLINE\n8\n0\nxy"}) {
        SCOPED_TRACE(bytes);
        const Scan result = scan(bytes);
        EXPECT_THAT(result.records, ElementsAre("LINE 8=0"));
        EXPECT_TRUE(result.lastCutOff);
        ASSERT_EQ(result.findings.size(), 1U);
        EXPECT_THAT(result.findings[0], HasSubstr("the file ends in the middle of a group"));
    }
}

TEST(RecordScanner, RefusesEndlessLinesByTheirNumber) {
    const std::string endless(RecordScanner::kLongestLine + 1, 'x');
    const std::string longest(RecordScanner::kLongestLine, 'x');
    EXPECT_EQ(scan("0\nTEXT\n1\n" + endless + "\n0\nEOF\n").failure,
              "line 4: the line is longer than 1048576 characters");
    EXPECT_EQ(scan("0\nTEXT\n" + endless + "\n").failure,
              "line 3: the line is longer than 1048576 characters");
    EXPECT_EQ(scan("0\nTEXT\n1\n" + longest + "\n0\nEOF\n").failure, "");
}

const std::string kMark("AutoCAD Binary DXF\r\n\x1A\0", 22);

template <class Number>
std::string raw(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

TEST(RecordScanner, ReadsBinaryFilesOfBothKinds) {
    const auto code = [](int value) { return raw(static_cast<std::int16_t>(value)); };
    const std::string two = kMark + code(0) + "LINE\0"s + code(10) + raw(1.5) + code(62) +
                            raw(std::int16_t{-3}) + code(90) + raw(std::int32_t{70000}) +
                            code(160) + raw(std::int64_t{1} << 40) + code(290) + "\1"s + code(310) +
                            "\3abc"s + code(1071) + raw(std::int32_t{7}) + code(0) + "EOF\0"s;
    const Scan wide = scan(two);
    EXPECT_THAT(wide.records,
                ElementsAre("LINE 10=1.500000 62=-3 90=70000 160=1099511627776 290=1 310=abc "
                            "1071=7",
                            "EOF"));
    EXPECT_THAT(wide.places, ElementsAre(22U, static_cast<unsigned>(two.size() - 6)));
    EXPECT_THAT(wide.findings, ElementsAre());

    const std::string one = kMark + "\0LINE\0\x0A"s + raw(1.5) + "\x3E"s + raw(std::int16_t{5}) +
                            "\xFF"s + code(1000) + "note\0"s + "\0EOF\0"s;
    EXPECT_THAT(scan(one).records, ElementsAre("LINE 10=1.500000 62=5 1000=note", "EOF"));
}

TEST(RecordScanner, StopsAtDamageInBinaryFiles) {
    const std::string head = kMark + raw(std::int16_t{0}) + "LINE\0"s;
    struct Case {
        const char* name;
        std::string tail;
        std::string finding;
    };
    const Case cases[] = {
        {"number cut off", raw(std::int16_t{10}) + "\0\0"s,
         "byte 29: the file ends in the middle of a group"},
        {"text cut off", raw(std::int16_t{8}) + "abc",
         "byte 29: the file ends in the middle of a group"},
        {"chunk longer than the file", raw(std::int16_t{310}) + "\xFFx",
         "byte 29: the file ends in the middle of a group"},
        {"half a code", "\x08", "byte 29: the file ends in the middle of a group"},
        {"unknown code", raw(std::int16_t{2000}) + "abc\0"s,
         "byte 29: 2000 is no group code; the rest is not read"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Scan result = scan(head + c.tail);
        EXPECT_THAT(result.records, ElementsAre("LINE"));
        EXPECT_TRUE(result.lastCutOff);
        EXPECT_THAT(result.findings, ElementsAre(c.finding));
    }
}

} // namespace
} // namespace headless
