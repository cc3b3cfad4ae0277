#include "style_file.h"

namespace {

TEST_F(StyleFile, OnlyJsonNamesAreTaken) {
    struct Case {
        const char* file;
        std::vector<std::wstring> messages;
        std::size_t count;
    };
    for (const Case& c :
         {Case{"a.JSON", kQuiet, 1}, Case{".json", kQuiet, 1}, Case{"a.jsn", kNoJson, 0},
          Case{"json", kNoJson, 0}, Case{"a.json ", kNoJson, 0}, Case{"a.json5", kNoJson, 0}}) {
        SCOPED_TRACE(c.file);
        std::ofstream(folder_.path() / c.file) << R"({"g":{"t":{"s":{}}}})";
        EXPECT_EQ(ComponentFunc::GetAllComponentInfo(path(c.file)).size(), c.count);
        EXPECT_EQ(messages(), c.messages);
    }
    EXPECT_TRUE(ComponentFunc::GetAllComponentInfo(CString()).empty());
    EXPECT_EQ(messages(), kNoJson);
    EXPECT_TRUE(ComponentFunc::GetAllComponentInfo(path("none.json")).empty());
    EXPECT_EQ(messages(), kQuiet) << "a file that is not there is no fault";
}

TEST_F(StyleFile, BrokenDocumentsAreReportedOnce) {
    const std::string deep(100'000, '[');
    std::string deepObjects;
    for (int i = 0; i < 100'000; ++i)
        deepObjects += "{\"a\":";
    for (const std::string& document :
         {std::string(), std::string("\r\n"), std::string("{"),
          std::string("{\"g\":{\"t\":{\"s\":{}}}"), std::string("{\"g\":1,}"),
          std::string("{'g':1}"), std::string("nul"), std::string("{\"g\":1e9999}"),
          std::string("{\"g\":\"\\ud800\"}"), deep, deepObjects, std::string("{\"\x81\x5C\":1}"),
          std::string("// comment\r\n{}"), std::string("\xEF\xBB\xBF{}"),
          std::string("\xFF\xFE{\0}\0", 6), std::string("\0{}", 3)}) {
        SCOPED_TRACE(document.substr(0, 30));
        EXPECT_TRUE(read(document).empty());
        EXPECT_EQ(messages(), kBroken);
    }
}

TEST_F(StyleFile, AFolderOfThatNameIsABrokenFile) {
    std::filesystem::create_directory(folder_.path() / "styles.json");
    EXPECT_TRUE(ComponentFunc::GetAllComponentInfo(path()).empty());
    EXPECT_EQ(messages(), kBroken);
}

TEST_F(StyleFile, WhatIsNoObjectIsPassedOver) {
    for (const char* document :
         {"null", "1", "[]", "[{\"t\":{\"s\":{}}}]", "\"g\"", "{}", "{\"g\":1}", "{\"g\":null}",
          "{\"g\":[{\"s\":{}}]}", "{\"g\":{\"t\":[{}]}}", "{\"g\":{\"t\":{\"s\":[]}}}",
          "{\"g\":{\"t\":{\"s\":\"x\",\"r\":true}}}"}) {
        SCOPED_TRACE(document);
        EXPECT_TRUE(read(document).empty());
        EXPECT_EQ(messages(), kQuiet);
    }
    EXPECT_EQ(read("{\"f\":7,\"g\":{\"a\":0,\"t\":{\"r\":[],\"s\":{}}}} rest").size(), 1U);
}

TEST_F(StyleFile, AbsentMembersAreNull) {
    const Components styles = read("{\"g\":{\"t\":{\"s\":{\"lineWidth\":5}}}}");
    ComponentInfo expected = named(L"g", L"t", L"s");
    expected.attributeValue1 = expected.attributeValue2 = expected.attributeValue3 = 0;
    expected.attributeValue4 = expected.lineColorIndex = expected.simpleLineColorIndex = 0;
    expected.lineType = expected.simpleLineType = expected.hatchName = L"";
    expected.lineScale = expected.simpleLineScale = 0;
    expected.simpleLineWidth = expected.hatchColorIndex = expected.hatchScale = 0;
    expected.setSimpleLineRealWidth = expected.setHatch = expected.useFloorHeight = 0;
    expected.dryConstructionMethod = 0;
    expected.lineWidth = 5;
    expected.lineLayerInfo = {L"", 0, L"", 0, 0, 0, 0};
    expected.hatchLayerInfo = expected.simpleLineLayerInfo = expected.lineLayerInfo;
    ASSERT_EQ(styles.size(), 1U);
    EXPECT_TRUE(fields(styles.begin()->second) == fields(expected));
}

TEST_F(StyleFile, WrongKindsAreConvertedOrNull) {
    struct Case {
        const char* value; // of every member
        int number;
        double real;
        bool flag;
        const wchar_t* text;
    };
    for (const Case& c : {
             Case{"\"12\"", 0, 0, false, L"12"},
             {"7", 7, 7, true, L"7"},
             {"-1", -1, -1, true, L"-1"},
             {"60.75", 60, 60.75, true, L"60.75"},
             {"-0.5", 0, -0.5, true, L"-0.5"},
             {"true", 1, 1, true, L"true"},
             {"false", 0, 0, false, L"false"},
             {"null", 0, 0, false, L""},
             {"[1]", 0, 0, false, L""},
             {"{\"a\":1}", 0, 0, false, L""},
             {"2147483648", 0, 2147483648.0, true, L"2147483648"},
             {"18446744073709551616", 0, 18446744073709551616.0, true, L"1.8446744073709552e+19"},
         }) {
        SCOPED_TRACE(c.value);
        std::string members;
        for (const char* key : {"lineWidth", "lineScale", "setHatch", "hatchName", "lineLayerInfo"})
            members += std::string("\"") + key + "\":" + c.value + ",";
        const Components styles =
            read("{\"g\":{\"t\":{\"s\":{" + members + "\"useFloorHeight\":2}}}}");
        ASSERT_EQ(styles.size(), 1U);
        const ComponentInfo& info = styles.begin()->second;
        EXPECT_EQ(info.lineWidth, c.number);
        EXPECT_EQ(info.lineScale, c.real);
        EXPECT_EQ(info.setHatch, c.flag ? 1 : 0);
        EXPECT_EQ(std::wstring(info.hatchName), c.text);
        EXPECT_EQ(info.useFloorHeight, 1);
        EXPECT_TRUE(info.lineLayerInfo == (LayerInfo{L"", 0, L"", 0, 0, 0, 0}));
        EXPECT_EQ(messages(), kQuiet);
    }
}

TEST_F(StyleFile, OfMembersWithTheSameNameTheLastStays) {
    const Components styles = read("{\"g\":{\"t\":{\"s\":{\"lineWidth\":1},\"s\":{\"lineWidth\":2,"
                                   "\"lineWidth\":3}}},\"h\":{},\"h\":{\"t\":{\"s\":{}}}}");
    ASSERT_EQ(styles.size(), 2U);
    EXPECT_EQ(styles.at(L"g-t-s").lineWidth, 3);
}

TEST_F(StyleFile, LineEndsDoNotMatter) {
    EXPECT_EQ(read("{\r\n \"g\":{\n\"t\":\r\n{\"s\":{}}}\r\n\r\n}").size(), 1U);
}

} // namespace
