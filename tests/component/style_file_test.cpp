#include "style_file.h"

#include <csignal>
#include <limits>

#include <sys/resource.h>

namespace {

TEST_F(StyleFile, IsOneLineOfSortedMembersInTheCodePage) {
    add(distinct(L"g", L"t", L"s"));
    const Components back = savedAndRead();
    EXPECT_EQ(bytes(),
              R"({"g":{"t":{"s":{"attributeName":"n","attributeValue1":1,"attributeValue2":2,)"
              R"("attributeValue3":3,"attributeValue4":-4,"dryConstructionMethod":21,)"
              R"("expressionStyle":11,"hatchColorIndex":9,)"
              R"("hatchLayerInfo":{"colorIndex":15,"layerName":"B","lineType":"b","lineWidth":16,)"
              R"("newVpFreeze":0,"print":1,"tranparency":17},)"
              "\"hatchName\":\"\xD6\xD0/\\\"h\","
              R"("hatchScale":10,"lineColorIndex":5,)"
              R"("lineLayerInfo":{"colorIndex":12,"layerName":"A","lineType":"a","lineWidth":13,)"
              R"("newVpFreeze":1,"print":0,"tranparency":14},)"
              R"("lineScale":0.5,"lineType":"l","lineWidth":6,"setHatch":1,)"
              R"("setSimpleLineRealWidth":0,"simpleLineColorIndex":7,)"
              R"("simpleLineLayerInfo":{"colorIndex":18,"layerName":"C","lineType":"c",)"
              R"("lineWidth":19,"newVpFreeze":1,"print":1,"tranparency":20},)"
              R"("simpleLineScale":2.0,"simpleLineType":"sl","simpleLineWidth":8,)"
              R"("useFloorHeight":0}}}})"
              "\r\n");
    ASSERT_EQ(back.size(), 1U);
    EXPECT_EQ(back.begin()->first, L"g-t-s");
    EXPECT_TRUE(fields(back.begin()->second) == fields(distinct(L"g", L"t", L"s")));
}

TEST_F(StyleFile, RecordsGoUnderTheNamesTheyCarry) {
    components_[L"1"] = named(L"b", L"t", L"s");
    components_[L"2"] = named(L"a-b", L"c", L"d");
    components_[L"3"] = named(L"b", L"t", L"s");
    components_[L"3"].lineWidth = 3;
    components_[L"4"] = named(L"a", L"b-c", L"d");
    components_[L"5"] = named(L"", L"", L"");
    const Components back = savedAndRead();
    ASSERT_EQ(back.size(), 3U);
    EXPECT_EQ(back.at(L"b-t-s").lineWidth, 3) << "the later of the same names";
    EXPECT_EQ(back.at(L"a-b-c-d").groupName, L"a-b") << "the later of the same key";
    EXPECT_TRUE(fields(back.at(L"--")) == fields(named(L"", L"", L"")));
}

TEST_F(StyleFile, ComesBackWhateverTheTexts) {
    for (const wchar_t* text : {L"\"", L"\\", L"\\n", L"a\nb\r\tc", L"\x1A", L"\x7F", L"/*x*/",
                                L"//", L"}", L" ", L"€", L"混凝土", L"\xE000"}) {
        ComponentInfo info = named(text, text, text);
        info.hatchName = info.lineLayerInfo.layerName = text;
        add(info);
    }
    const Components back = savedAndRead();
    ASSERT_EQ(back.size(), components_.size());
    for (const auto& [key, info] : components_)
        EXPECT_TRUE(fields(back.at(key)) == fields(info)) << CStringA(key).GetString();
}

TEST_F(StyleFile, NumbersComeBackWhole) {
    const double scales[] = {0.1, 1.0 / 3.0, -0.0, 5e-324, 1e16, 1e300};
    for (std::size_t i = 0; i < std::size(scales); ++i) {
        ComponentInfo info = named(L"g", L"t", std::to_wstring(i).c_str());
        info.lineScale = scales[i];
        info.lineWidth = std::numeric_limits<int>::min();
        info.hatchScale = std::numeric_limits<int>::max();
        info.setHatch = 5; // written as 1
        add(info);
    }
    for (auto& [key, info] : savedAndRead()) {
        EXPECT_EQ(info.lineScale, components_[key].lineScale);
        EXPECT_EQ(info.lineWidth, std::numeric_limits<int>::min());
        EXPECT_EQ(info.hatchScale, std::numeric_limits<int>::max());
        EXPECT_EQ(info.setHatch, 1);
    }
}

TEST_F(StyleFile, ANumberThatJsonLacksDoesNotSpoilTheFile) {
    ComponentInfo info = named(L"g", L"t", L"s");
    info.lineScale = std::numeric_limits<double>::infinity();
    info.simpleLineScale = std::numeric_limits<double>::quiet_NaN();
    add(info);
    const Components back = savedAndRead();
    EXPECT_EQ(messages(), kQuiet);
    ASSERT_EQ(back.size(), 1U);
    EXPECT_EQ(back.begin()->second.lineScale, 0.0);
    EXPECT_EQ(back.begin()->second.simpleLineScale, 0.0);
}

TEST_F(StyleFile, AnEmptyMapIsAnEmptyDocument) {
    EXPECT_TRUE(savedAndRead().empty());
    EXPECT_EQ(bytes(), "{}\r\n");
    EXPECT_EQ(messages(), kQuiet);
}

TEST_F(StyleFile, MissingFoldersAreMade) {
    add(named(L"g", L"t", L"s"));
    const CString deep = path("a") + L"\\b/c\\styles.json";
    ComponentFunc::SaveComponentInfo(components_, deep);
    EXPECT_EQ(ComponentFunc::GetAllComponentInfo(deep).size(), 1U);
}

TEST_F(StyleFile, WhatCannotBeWrittenIsNotReported) {
    add(named(L"g", L"t", L"s"));
    std::ofstream(folder_.path() / "file") << "x";
    std::filesystem::create_directory(folder_.path() / "folder");
    for (const CString& place : {path("file") + L"\\styles.json", path("folder"), CString()})
        ComponentFunc::SaveComponentInfo(components_, place);
    EXPECT_EQ(bytes("file"), "x");
    EXPECT_EQ(messages(), kQuiet);
}

TEST_F(StyleFile, AFullDiskLeavesTheOldFile) {
    add(named(L"g", L"t", L"s"));
    savedAndRead();
    const std::string before = bytes();
    for (int i = 0; i < 100; ++i)
        add(named(L"g", L"t", std::to_wstring(i).c_str()));

    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{before.size() * 4, old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    ComponentFunc::SaveComponentInfo(components_, path());
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(bytes(), before);
    const std::filesystem::directory_iterator files(folder_.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "nothing else is left";
}

TEST_F(StyleFile, ALinkedFileStaysLinked) {
    std::ofstream(folder_.path() / "real") << "{}";
    std::filesystem::permissions(folder_.path() / "real", std::filesystem::perms(0640));
    std::filesystem::create_symlink("real", folder_.path() / "styles.json");
    add(named(L"g", L"t", L"s"));
    EXPECT_EQ(savedAndRead().size(), 1U);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.path() / "styles.json"));
    EXPECT_EQ(std::filesystem::status(folder_.path() / "real").permissions(),
              std::filesystem::perms(0640));
}

} // namespace
