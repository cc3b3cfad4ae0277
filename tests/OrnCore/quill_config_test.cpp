#include "OrnCore/quill_config.h"

#include <gmock/gmock.h>

#include <dbobjptr.h>
#include <dbsymtb.h>

#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_str.h"
#include "support/product_folder.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const char* const kConfiguration = R"({
 "linetypes": [{"name": "DASHDOT", "description": "_ . _", "dashes": [12, -3, 0, -3]}],
 "layers": [{"code": 1, "name": "板", "color": 3, "linetype": "DASHDOT", "lineweight": 30},
            {"code": 2, "name": "辅助", "plot": false},
            {"code": 3, "name": "0", "color": 1},
            {"code": 4, "name": "a|b"},
            {"code": 5, "name": "X", "linetype": "NOSUCH"}],
 "textStyles": [{"code": 7, "name": "注释", "font": "gbenor.shx", "bigFont": "gbcbig.shx",
                 "widthFactor": 0.7}],
 "dimensionStyles": [{"first": 100, "second": 3, "third": 0, "textStyle": 7, "scale": 100,
                      "textHeight": 3, "tick": 1.25, "decimals": 1},
                     {"first": 50, "second": 3, "third": 0, "textStyle": 99, "scale": 50}]
})";

class Configuration : public test_support::SessionTest {
protected:
    Configuration() { g_pQuillCfgSet->Reset(); }

    void configure(const std::string& document) {
        product_.putData("quillConfig.json", document);
        g_pQuillCfgSet->Reset();
    }

    static std::wstring nameOf(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
        const ACHAR* name = L"";
        if (record.openStatus() == Acad::eOk) record->getName(name);
        return name;
    }

    test_support::ProductFolder product_;
};

TEST_F(Configuration, MakesLayersWithTheirProperties) {
    configure(kConfiguration);
    const AcDbObjectId id = g_pQuillCfgSet->GetLayerId(1);
    EXPECT_EQ(g_pQuillCfgSet->GetLayerId(1), id);
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    ASSERT_EQ(layer.openStatus(), Acad::eOk);
    EXPECT_EQ(nameOf(id), L"板");
    EXPECT_EQ(layer->color().colorIndex(), 3);
    EXPECT_EQ(layer->lineWeight(), AcDb::kLnWt030);
    EXPECT_TRUE(layer->isPlottable());

    const AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(layer->linetypeObjectId());
    ASSERT_EQ(linetype.openStatus(), Acad::eOk);
    EXPECT_EQ(nameOf(linetype->objectId()), L"DASHDOT");
    EXPECT_EQ(linetype->numDashes(), 4);
    EXPECT_EQ(linetype->dashLengthAt(1), -3.0);
    EXPECT_EQ(linetype->patternLength(), 18.0);

    const AcDbObjectPointer<AcDbLayerTableRecord> plain(g_pQuillCfgSet->GetLayerId(2));
    EXPECT_FALSE(plain->isPlottable());
    EXPECT_EQ(plain->color().colorIndex(), 7);
    EXPECT_EQ(plain->linetypeObjectId(), database()->continuousLinetype());
    const AcDbObjectPointer<AcDbLayerTableRecord> other(g_pQuillCfgSet->GetLayerId(5));
    EXPECT_EQ(other->linetypeObjectId(), database()->continuousLinetype());
}

TEST_F(Configuration, TakesWhatIsThereAsItIs) {
    configure(kConfiguration);
    EXPECT_EQ(g_pQuillCfgSet->GetLayerId(3), database()->layerZero());
    const AcDbObjectPointer<AcDbLayerTableRecord> zero(database()->layerZero());
    EXPECT_EQ(zero->color().colorIndex(), 7);

    const AcDbObjectId hidden = addLayer(L"板");
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(hidden, AcDb::kForWrite);
        layer->setIsHidden(true);
    }
    EXPECT_EQ(g_pQuillCfgSet->GetLayerId(1), hidden) << "a hidden layer has its name, too";
}

TEST_F(Configuration, MakesTextAndDimensionStyles) {
    configure(kConfiguration);
    const AcDbObjectId dimension = g_pQuillCfgSet->GetDimStyleId(100, 3, 0);
    EXPECT_EQ(nameOf(dimension), L"VANT_100_3");
    const AcDbObjectPointer<AcDbDimStyleTableRecord> style(dimension);
    ASSERT_EQ(style.openStatus(), Acad::eOk);
    EXPECT_EQ(style->dimscale(), 100.0);
    EXPECT_EQ(style->dimtxt(), 3.0);
    EXPECT_EQ(style->dimtsz(), 1.25);
    EXPECT_EQ(style->dimdec(), 1);
    EXPECT_EQ(style->dimtxsty(), g_pQuillCfgSet->GetTextStyleId(7));

    const AcDbObjectPointer<AcDbTextStyleTableRecord> text(style->dimtxsty());
    ASSERT_EQ(text.openStatus(), Acad::eOk);
    const ACHAR* font = nullptr;
    text->fileName(font);
    EXPECT_STREQ(font, L"gbenor.shx");
    text->bigFontFileName(font);
    EXPECT_STREQ(font, L"gbcbig.shx");
    EXPECT_EQ(text->xScale(), 0.7);
    EXPECT_EQ(nameOf(g_pQuillCfgSet->GetDimStyleId(50, 3, 0)), L"VANT_50_3");
}

TEST_F(Configuration, WorksInTheDatabaseThatIsNamed) {
    configure(kConfiguration);
    AcDbDatabase other;
    const AcDbObjectId id = g_pQuillCfgSet->GetLayerId(1, &other);
    EXPECT_EQ(id.database(), &other);
    EXPECT_NE(g_pQuillCfgSet->GetLayerId(1), id);
    EXPECT_EQ(g_pQuillCfgSet->GetTextStyleId(7, &other).database(), &other);
    const AcDbObjectPointer<AcDbDimStyleTableRecord> style(
        g_pQuillCfgSet->GetDimStyleId(100, 3, 0, &other));
    EXPECT_EQ(style->dimtxsty(), g_pQuillCfgSet->GetTextStyleId(7, &other));
}

TEST_F(Configuration, AnswersNullForWhatItDoesNotHave) {
    configure(kConfiguration);
    EXPECT_EQ(g_pQuillCfgSet->GetLayerName(1), L"板");
    EXPECT_EQ(g_pQuillCfgSet->GetLayerName(9), L"");
    EXPECT_TRUE(g_pQuillCfgSet->GetLayerId(9).isNull());
    EXPECT_TRUE(g_pQuillCfgSet->GetLayerId(4).isNull()) << "no name that a drawing allows";
    EXPECT_TRUE(g_pQuillCfgSet->GetTextStyleId(9).isNull());
    EXPECT_TRUE(g_pQuillCfgSet->GetDimStyleId(100, 3, 1).isNull());
    EXPECT_TRUE(g_pQuillCfgSet->GetDimStyleId(-1, -1, 0).isNull());
    session().closeDrawings();
    EXPECT_TRUE(g_pQuillCfgSet->GetLayerId(1).isNull());
    EXPECT_THAT(session().messageBoxes(), IsEmpty());
}

TEST_F(Configuration, ReadsTheFileOnce) {
    configure(kConfiguration);
    EXPECT_EQ(g_pQuillCfgSet->GetLayerName(1), L"板");
    product_.putData("quillConfig.json", R"({"layers":[{"code":1,"name":"梁"}]})");
    EXPECT_EQ(g_pQuillCfgSet->GetLayerName(1), L"板");
    // A session that loads the product sees the file as it is then.
    ASSERT_NE(LoadLibraryW(L"libOrnCore.so"), nullptr);
    EXPECT_EQ(g_pQuillCfgSet->GetLayerName(1), L"梁");
}

TEST_F(Configuration, SaysOnceThatTheFileIsMissing) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(g_pQuillCfgSet->GetLayerId(1).isNull());
        EXPECT_TRUE(g_pQuillCfgSet->GetLayers().empty());
    }
    ASSERT_EQ(session().messageBoxes().size(), 1U);
    EXPECT_THAT(session().messageBoxes()[0], HasSubstr(L"quillConfig.json"));
}

TEST_F(Configuration, SaysWhatIsWrongWithTheFile) {
    const struct {
        const char* document;
        const wchar_t* place;
    } cases[] = {
        {"", L"Line 1"},
        {"{\"layers\": [}", L"Line 1"},
        {"[]", L"not an object"},
        {"{\"layers\": [{\"code\": 1, \"name\": \"\xFF\"}]}", L"UTF-8"},
        {R"({"layers": {}})", L"layers: not an array"},
        {R"({"layers": [7]})", L"layers[0]: not an object"},
        {R"({"layers": [{"name": "a"}]})", L"layers[0].code"},
        {R"({"layers": [{"code": -1, "name": "a"}]})", L"layers[0].code"},
        {R"({"layers": [{"code": 1, "name": ""}]})", L"layers[0].name"},
        {R"({"layers": [{"code": 1, "name": 5}]})", L"layers[0].name"},
        {R"({"layers": [{"code": 1, "name": "a"}, {"code": 1, "name": "b"}]})",
         L"layers[1].code: taken"},
        {R"({"layers": [{"code": 1, "name": "a", "color": 256}]})", L"layers[0].color"},
        {R"({"layers": [{"code": 1, "name": "a", "lineweight": 31}]})", L"layers[0].lineweight"},
        {R"({"layers": [{"code": 1, "name": "a", "plot": 1}]})", L"layers[0].plot"},
        {R"({"linetypes": [{"name": "a", "dashes": [1, "2"]}]})", L"linetypes[0].dashes"},
        {R"({"textStyles": [{"code": 1, "name": "a"}]})", L"textStyles[0].font"},
        {R"({"textStyles": [{"code": 1, "name": "a", "font": "b", "widthFactor": 0}]})",
         L"textStyles[0].widthFactor"},
        {R"({"dimensionStyles": [{"first": 1, "second": 2, "textStyle": 1}]})",
         L"dimensionStyles[0].third"},
    };
    std::size_t count = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.document);
        configure(c.document);
        EXPECT_TRUE(g_pQuillCfgSet->GetLayers().empty());
        ASSERT_EQ(session().messageBoxes().size(), ++count);
        EXPECT_THAT(session().messageBoxes().back(), HasSubstr(c.place));
    }
    configure("{\"layers\": [" + std::string(100'000, '[') + "]}");
    EXPECT_TRUE(g_pQuillCfgSet->GetLayers().empty());
    std::filesystem::remove(product_.path() / "prg" / "quillConfig.json");
    std::filesystem::create_directory(product_.path() / "prg" / "quillConfig.json");
    g_pQuillCfgSet->Reset();
    EXPECT_TRUE(g_pQuillCfgSet->GetLayers().empty());
    EXPECT_EQ(session().messageBoxes().size(), count + 2);
}

TEST_F(Configuration, TakesAnEditorsMark) {
    configure("\xEF\xBB\xBF{\"layers\": [{\"code\": 1, \"name\": \"a\"}]}");
    EXPECT_EQ(g_pQuillCfgSet->GetLayers().size(), 1U);
}

using ShippedConfiguration = test_support::SessionTest;

TEST_F(ShippedConfiguration, IsWholeAndAllCanBeMade) {
    // Without a product folder of its own the test program, which the build puts into bin/, stands
    // in for the module.
    g_pQuillCfgSet->Reset();
    EXPECT_GE(g_pQuillCfgSet->GetLayers().size(), 24U);
    for (const auto& [code, layer] : g_pQuillCfgSet->GetLayers()) {
        const AcDbObjectPointer<AcDbLayerTableRecord> made(g_pQuillCfgSet->GetLayerId(code));
        ASSERT_EQ(made.openStatus(), Acad::eOk);
        EXPECT_EQ(layer.linetype.CompareNoCase(L"Continuous") == 0,
                  made->linetypeObjectId() == database()->continuousLinetype());
    }
    for (const int scale : {1, 5, 10, 20, 25, 50, 100, 150, 200}) {
        const AcDbObjectPointer<AcDbDimStyleTableRecord> style(
            g_pQuillCfgSet->GetDimStyleId(scale, 3, 0));
        ASSERT_EQ(style.openStatus(), Acad::eOk);
        EXPECT_EQ(style->dimscale(), scale);
        EXPECT_FALSE(style->dimtxsty().isNull());
    }
    EXPECT_THAT(session().messageBoxes(), IsEmpty());
}

using AddedLayers = test_support::SessionTest;

TEST_F(AddedLayers, HaveTheirColorAndLinetype) {
    const AcDbObjectId id = CZelDwg::AddLayer(L"梁", 5, L"Continuous", 0);
    EXPECT_NE(database()->clayer(), id);
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
        ASSERT_EQ(layer.openStatus(), Acad::eOk);
        EXPECT_EQ(layer->color().colorIndex(), 5);
        EXPECT_EQ(layer->linetypeObjectId(), database()->continuousLinetype());
    }
    EXPECT_EQ(CZelDwg::AddLayer(L"梁", 6, L"Continuous", 1), id);
    EXPECT_EQ(database()->clayer(), id);
    EXPECT_TRUE(CZelDwg::AddLayer(L"a|b", 1, L"", 0).isNull());
    session().closeDrawings();
    EXPECT_TRUE(CZelDwg::AddLayer(L"柱", 1, L"", 0).isNull());
}

TEST(ZelStr, CutsAtEverySeparator) {
    EXPECT_THAT(CZelStr::StrToAry(L"VANT_100_3", L"_"), ElementsAre(L"VANT", L"100", L"3"));
    EXPECT_THAT(CZelStr::StrToAry(L"_a__", L"_"), ElementsAre(L"", L"a", L"", L""));
    EXPECT_THAT(CZelStr::StrToAry(L"", L"_"), ElementsAre(L""));
    EXPECT_THAT(CZelStr::StrToAry(L"a_b", L""), ElementsAre(L"a_b"));
    EXPECT_THAT(CZelStr::StrToAry(L"a--b-", L"--"), ElementsAre(L"a", L"b-"));
}

} // namespace
