// The defaults file: where it is found and how one style is chosen from it.
#include "style_file.h"

#include "component/disk_files.h"
#include "support/product_folder.h"

namespace {

class DefaultStyles : public StyleFile {
protected:
    void putDefaults(const std::string& document) const {
        product_.putData("componentDefaultData.json", document);
    }

    test_support::ProductFolder product_;
};

TEST_F(DefaultStyles, AreFoundBesideTheLoadedModule) {
    EXPECT_TRUE(ComponentFunc::GetAllComponentInfo(true).empty());
    EXPECT_TRUE(fields(ComponentFunc::GetComponentInfo(L"g", L"t", L"", true)) ==
                fields(ComponentInfo()));
    EXPECT_EQ(messages(), kQuiet) << "a product without a defaults file";

    putDefaults(R"({"g":{"t":{"s":{},"r":{}}}})");
    EXPECT_EQ(ComponentFunc::GetAllComponentInfo(true).size(), 2U);
    EXPECT_EQ(ComponentFunc::GetAllComponentInfo(false).size(), 2U) << "no styles in a drawing";

    putDefaults("{");
    EXPECT_TRUE(ComponentFunc::GetAllComponentInfo(true).empty());
    EXPECT_EQ(messages(), kBroken);
    EXPECT_TRUE(fields(ComponentFunc::GetComponentInfo(L"g", L"t", L"s", true)) ==
                fields(ComponentInfo()));
    EXPECT_EQ(messages(), kBroken);
}

TEST_F(DefaultStyles, OneIsChosenByItsNames) {
    // The first characters of the code page's order are not those of Unicode's.
    add(named(L"梁", L"t", L"叠"));
    add(named(L"梁", L"t", L"板"));
    add(named(L"梁", L"t", L"中"));
    add(named(L"梁", L"u", L""));
    add(named(L"梁", L"u", L"x"));
    for (auto& [key, info] : components_)
        info.attributeName = key;
    const auto file = product_.path() / "prg" / "componentDefaultData.json";
    ComponentFunc::SaveComponentInfo(components_, file.wstring().c_str());

    const struct {
        const char* name;
        const wchar_t* names[3];
        const wchar_t* key; // empty: none
    } cases[] = {
        {"by all three", {L"梁", L"t", L"中"}, L"梁-t-中"},
        {"the first in byte order", {L"梁", L"t", L""}, L"梁-t-板"},
        {"the one without a name comes first", {L"梁", L"u", L""}, L"梁-u-"},
        {"unknown style", {L"梁", L"t", L"x"}, L""},
        {"case matters", {L"梁", L"T", L"中"}, L""},
        {"unknown group", {L"墙", L"t", L""}, L""},
        {"no names", {L"", L"", L""}, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        for (const bool fileOnly : {true, false}) {
            const ComponentInfo found =
                ComponentFunc::GetComponentInfo(c.names[0], c.names[1], c.names[2], fileOnly);
            const auto expected = components_.find(c.key);
            EXPECT_TRUE(fields(found) ==
                        fields(expected != components_.end() ? expected->second : ComponentInfo()));
        }
    }
    EXPECT_EQ(messages(), kQuiet);
}

TEST_F(DefaultStyles, WhatIsNoObjectIsPassedOverInTheSearch) {
    putDefaults(R"({"g":{"s":1,"t":{"a":7,"b":{"lineWidth":5}}}})");
    EXPECT_EQ(ComponentFunc::GetComponentInfo(L"g", L"t", L"", true).styleName, L"b");
    EXPECT_EQ(ComponentFunc::GetComponentInfo(L"g", L"t", L"a", true).lineWidth, 100);
    EXPECT_EQ(ComponentFunc::GetComponentInfo(L"g", L"s", L"", true).lineWidth, 100);
}

TEST_F(StyleFile, TheProductsOwnAreComplete) {
    // Without the module the test program, which the build puts into bin/, stands in for it.
    const Components shipped = ComponentFunc::GetAllComponentInfo(true);
    EXPECT_EQ(messages(), kQuiet);
    EXPECT_GE(shipped.size(), 20U);
    for (const auto& [key, info] : shipped) {
        SCOPED_TRACE(CStringA(key).GetString());
        EXPECT_FALSE(info.attributeName.IsEmpty());
        EXPECT_FALSE(info.lineLayerInfo.layerName.IsEmpty());
        EXPECT_FALSE(info.simpleLineLayerInfo.layerName.IsEmpty());
        EXPECT_GT(info.lineScale * info.simpleLineScale, 0.0);
        EXPECT_TRUE(info.setHatch == 0 ||
                    (info.hatchScale > 0 && !info.hatchLayerInfo.layerName.IsEmpty()));
    }
    components_ = shipped;
    const Components back = savedAndRead();
    ASSERT_EQ(back.size(), shipped.size());
    for (const auto& [key, info] : shipped)
        EXPECT_TRUE(fields(back.at(key)) == fields(info));

    const ComponentInfo slab = ComponentFunc::GetComponentInfo(L"楼板", L"叠合板", L"", true);
    EXPECT_EQ(slab.styleName, L"60+70");
    EXPECT_EQ(slab.attributeValue3, 130);
}

TEST_F(StyleFile, TouchingMakesOnlyWhatIsMissing) {
    std::ofstream(folder_.path() / "old") << "kept";
    GSF::TouchFile(path("old"));
    EXPECT_EQ(bytes("old"), "kept");
    GSF::TouchFile(path("a") + L"\\b\\new");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path() / "a/b/new"));
    GSF::TouchFile(path("old") + L"\\b\\new"); // below a file: nothing happens
    GSF::TouchFile(CString());
    EXPECT_EQ(bytes("old"), "kept");
}

} // namespace
