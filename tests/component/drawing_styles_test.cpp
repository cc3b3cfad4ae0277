// The styles that a drawing carries itself, and the keys they have there.
#include "style_file.h"

#include <dbdict.h>
#include <dbxrecrd.h>

#include "component/record_key.h"
#include "component/rename_dict.h"
#include "frame/object_handle.h"
#include "frame/resbuf_chain.h"
#include "support/session_fixture.h"

namespace {

constexpr const wchar_t* kDictionary = L"KELMOR-LAYER";

TEST(RecordKeys, KeepWhatADictionaryDoesNotAllowAsWords) {
    const struct {
        const wchar_t *plain, *fixed;
    } cases[] = {
        {L"a<b>c", L"aorn(左箭头)ornborn(右箭头)ornc"},
        {L"1/2", L"1orn(斜杠)orn2"},
        {L"1\\2", L"1orn(反斜杠)orn2"},
        {L"\"", L"orn(引号)orn"},
        {L"::", L"orn(冒号)ornorn(冒号)orn"},
        {L";", L"orn(分号)orn"},
        {L"?", L"orn(问号)orn"},
        {L"|", L"orn(竖杠)orn"},
        {L"a,b", L"aorn(逗号)ornb"},
        {L"=", L"orn(等于号)orn"},
        {L"`", L"orn(反引号)orn"},
        {L"梁-叠合梁*-200x400 ", L"梁-叠合梁*-200x400 "},
        {L"", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(CStringA(c.plain).GetString());
        CString key = c.plain;
        EXPECT_EQ(Common::FixRecordKey(CString(c.plain)), c.fixed);
        Common::FixRecordKey(key);
        EXPECT_EQ(key, c.fixed);
        Common::RecoverRecordKey(key);
        EXPECT_EQ(key, c.plain);
    }
}

class DrawingStyles : public test_support::SessionTest {
protected:
    void add(ComponentInfo info) {
        const CString key = info.groupName + L"-" + info.typeName + L"-" + info.styleName;
        styles_[key] = std::move(info);
    }
    void save() { ComponentFunc::SaveComponentDataToDwg(styles_, nullptr); }

    AcDbObjectId stored(const wchar_t* key = kDictionary) {
        const ReadHandle<AcDbDictionary> root(database()->namedObjectsDictionaryId());
        AcDbObjectId id;
        root->getAt(key, id);
        return id;
    }

    void put(const wchar_t* key, std::unique_ptr<AcDbObject> object) {
        const WriteHandle<AcDbDictionary> dictionary(stored());
        AcDbObjectId id;
        ASSERT_EQ(dictionary->setAt(key, object.get(), id), Acad::eOk);
        object.release()->close();
    }
    void put(const wchar_t* key, resbuf* values) {
        const frame::ResbufChain chain(values);
        auto record = std::make_unique<AcDbXrecord>();
        ASSERT_EQ(record->setFromRbChain(*values), Acad::eOk);
        put(key, std::move(record));
    }

    /// The styles in the drawing, of which there must be some: else the file's would answer.
    static Components read() { return ComponentFunc::GetAllComponentInfo(false); }
    static Components shipped() { return ComponentFunc::GetAllComponentInfo(true); }

    void expectStored(const Components& expected) {
        const Components found = kelmor_get_component_data();
        EXPECT_EQ(found.size(), expected.size());
        for (const auto& [key, info] : expected) {
            SCOPED_TRACE(CStringA(key).GetString());
            ASSERT_TRUE(found.contains(key));
            EXPECT_TRUE(fields(found.at(key)) == fields(info));
        }
    }

    Components styles_;
};

TEST_F(DrawingStyles, ComeBackFieldByField) {
    ComponentInfo extreme = distinct(L"梁", L"a/b", L"<200\\x|400>");
    extreme.attributeValue4 = -2147483647 - 1;
    extreme.setHatch = 2;
    extreme.hatchLayerInfo.print = 3;
    extreme.simpleLineType = L"";
    extreme.simpleLineScale = 1e-300;
    add(extreme);
    add(distinct(L"梁", L"*?", L"`=,;:\""));
    add(ComponentInfo());
    save();
    expectStored(styles_);
    const ComponentInfo one = ComponentFunc::GetComponentInfo(L"梁", L"*?", L"", false);
    EXPECT_TRUE(fields(one) == fields(distinct(L"梁", L"*?", L"`=,;:\"")));

    save(); // Over those that are there.
    expectStored(styles_);
}

TEST_F(DrawingStyles, StandInTheirRecordInTheAgreedOrder) {
    add(distinct(L"G", L"T", L"S"));
    save();
    const ReadHandle<AcDbDictionary> dictionary(stored());
    AcDbObjectId id;
    ASSERT_EQ(dictionary->getAt(L"G-T-S", id), Acad::eOk);
    const ReadHandle<AcDbXrecord> record(id);
    resbuf* values = nullptr;
    ASSERT_EQ(record->rbChain(&values), Acad::eOk);
    const frame::ResbufChain chain(values);

    std::wstring text;
    int count = 0;
    for (const resbuf* item = values; item != nullptr; item = item->rbnext) {
        if (item->restype == 102) continue; // names the application
        ++count;
        if (item->restype == 1) text += item->resval.rstring;
        if (item->restype == 90) text += std::to_wstring(item->resval.rlong);
        if (item->restype == 40) text += item->resval.rreal == 0.5 ? L"half" : L"two";
        text += L" ";
    }
    EXPECT_EQ(count, 46);
    EXPECT_EQ(text, L"0 G T S n 1 2 3 -4 5 l half 6 7 sl two 8 0 1 中/\"h 9 10 11 A 12 a 13 14 0 1 "
                    L"B 15 b 16 17 1 0 C 18 c 19 20 1 1 0 21 ");
}

TEST_F(DrawingStyles, ReplaceThoseThatWereThere) {
    add(distinct(L"a", L"b", L"c"));
    add(distinct(L"a", L"b", L"d"));
    save();
    const AcDbObjectId before = stored();
    AcDbObjectId record;
    {
        const WriteHandle<AcDbDictionary> dictionary(before);
        ASSERT_EQ(dictionary->getAt(L"a-b-c", record), Acad::eOk);
        dictionary->setTreatElementsAsHard(false); // as another writer leaves it
    }
    styles_.erase(L"a-b-c");
    save();
    expectStored(styles_);
    EXPECT_TRUE(before.isErased());
    EXPECT_TRUE(record.isErased()) << "an orphan would be saved with the drawing for ever";

    ComponentFunc::SaveComponentDataToDwg({}, database());
    EXPECT_TRUE(stored().isValid());
    ASSERT_FALSE(shipped().empty());
    expectStored(shipped());
}

TEST_F(DrawingStyles, AnswerAlone) {
    ASSERT_EQ(ComponentFunc::GetComponentInfo(L"楼板", L"叠合板", L"60+70", false).attributeValue1,
              60);
    add(distinct(L"a", L"b", L"c"));
    save();
    EXPECT_TRUE(fields(ComponentFunc::GetComponentInfo(L"楼板", L"叠合板", L"60+70", false)) ==
                fields(ComponentInfo()));
}

TEST_F(DrawingStyles, OfKeysThatDifferInCaseTheLastStays) {
    add(distinct(L"A", L"b", L"c"));
    add(distinct(L"a", L"b", L"c"));
    styles_[L""] = distinct(L"x", L"y", L"z"); // no key for a dictionary
    save();
    const Components found = read();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.begin()->second.groupName, L"a");
}

TEST_F(DrawingStyles, AreReadAroundWhatIsNone) {
    add(distinct(L"G", L"T", L"S"));
    save();
    put(L"a dictionary", std::make_unique<AcDbDictionary>());
    put(L"nothing", std::make_unique<AcDbXrecord>());
    // A real where the group's name belongs, a text for the first attribute, and the end.
    put(L"odd", acutBuildList(90, 0, 40, 1.5, 1, L"T", 1, L"S", 1, L"N", 1, L"x", 90, 71, RTNONE));

    const Components found = read();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_TRUE(fields(found.at(L"G-T-S")) == fields(styles_.at(L"G-T-S")));
    EXPECT_TRUE(fields(found.at(L"nothing")) == fields(ComponentInfo()));
    ComponentInfo odd = named(L"", L"T", L"S");
    odd.attributeName = L"N";
    odd.attributeValue2 = 71;
    EXPECT_TRUE(fields(found.at(L"odd")) == fields(odd));
}

TEST_F(DrawingStyles, DoNothingWithoutAPlaceForThem) {
    add(distinct(L"G", L"T", L"S"));
    {
        const ReadHandle<AcDbDictionary> busy(database()->namedObjectsDictionaryId());
        save();
    }
    EXPECT_TRUE(stored().isNull());
    session().closeDrawings();
    save();
    Common::RenameDict(L"a", L"b");
    EXPECT_EQ(read().size(), shipped().size());
    EXPECT_TRUE(session().messageBoxes().empty());
    EXPECT_TRUE(session().output().empty());
}

TEST_F(DrawingStyles, AreFoundUnderTheirNameOnly) {
    add(distinct(L"G", L"T", L"S"));
    save();
    const AcDbObjectId id = stored();
    Common::RenameDict(L"no such entry", L"OTHER");
    EXPECT_EQ(stored(), id);
    Common::RenameDict(kDictionary, L"OTHER");
    EXPECT_EQ(stored(L"OTHER"), id);
    EXPECT_EQ(read().size(), shipped().size());
}

} // namespace
