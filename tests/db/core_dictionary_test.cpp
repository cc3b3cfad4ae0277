// Dictionaries, extension dictionaries, styles of multilines and the order of drawing.
#include "core_support.h"

#include <functional>

#include "db/mline_style.h"
#include "db/resbuf.h"
#include "db/sortents_table.h"
#include "db/xrecord.h"
#include "rx/ac_string.h"

using namespace coretest;

namespace {

using Names = std::vector<std::wstring>;

class Dictionaries : public CoreTest {
protected:
    AcDbObjectId put(const ACHAR* key) {
        AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId(), AcDb::kForWrite);
        auto* const record = new AcDbXrecord;
        AcDbObjectId id;
        EXPECT_EQ(groups->setAt(key, record, id), Acad::eOk);
        EXPECT_TRUE(record->isWriteEnabled());
        EXPECT_EQ(record->ownerId(), groups->objectId());
        record->close();
        return id;
    }
    Names keys(AcDb::DictIterOrder order = AcDb::kDictCollated) {
        AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId());
        const std::unique_ptr<AcDbDictionaryIterator> iterator(groups->newIterator(order));
        Names found;
        for (; !iterator->done(); iterator->next())
            found.emplace_back(iterator->name());
        return found;
    }
};

TEST_F(Dictionaries, KeepKeysInBothOrders) {
    put(L"beta");
    put(L"Gamma");
    const AcDbObjectId alpha = put(L"ALPHA");
    EXPECT_EQ(keys(), (Names{L"beta", L"Gamma", L"ALPHA"}));
    EXPECT_EQ(keys(AcDb::kDictSorted), (Names{L"ALPHA", L"beta", L"Gamma"}));

    AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId());
    const std::unique_ptr<AcDbDictionaryIterator> iterator(groups->newIterator());
    EXPECT_TRUE(iterator->setPosition(L"GAMMA"));
    EXPECT_FALSE(iterator->setPosition(L"delta"));
    EXPECT_STREQ(iterator->name(), L"Gamma");
    EXPECT_TRUE(iterator->setPosition(alpha));
    AcDbObject* object = nullptr;
    ASSERT_EQ(iterator->getObject(object), Acad::eOk);
    EXPECT_EQ(object->objectId(), alpha);
    object->close();
}

TEST_F(Dictionaries, FindInAnyCase) {
    const AcDbObjectId id = put(L"Key");
    AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId());
    AcDbObjectId found;
    EXPECT_EQ(groups->getAt(L"KEY", found), Acad::eOk);
    EXPECT_EQ(found, id);
    EXPECT_EQ(groups->getAt(L"none", found), Acad::eKeyNotFound);
    EXPECT_TRUE(groups->has(L"key"));
    EXPECT_TRUE(groups->has(id));
    AcString name;
    EXPECT_EQ(groups->nameAt(id, name), Acad::eOk);
    EXPECT_STREQ(name, L"Key");
    EXPECT_EQ(groups->nameAt(db.layerZero(), name), Acad::eKeyNotFound);

    AcDbXrecord* record = nullptr;
    ASSERT_EQ(groups->getAt(L"key", record, AcDb::kForWrite), Acad::eOk);
    AcDbObject* object = nullptr;
    EXPECT_EQ(groups->getAt(L"key", object, AcDb::kForRead), Acad::eWasOpenForWrite);
    record->close();
    AcDbMlineStyle* style = nullptr;
    EXPECT_EQ(groups->getAt(L"key", style), Acad::eNotThatKindOfClass);
}

TEST_F(Dictionaries, ErasedObjectsAreAbsentUntilBroughtBack) {
    const AcDbObjectId id = put(L"Key");
    put(L"Other");
    erase(id);
    {
        AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId());
        EXPECT_FALSE(groups->has(L"Key"));
        EXPECT_FALSE(groups->has(id));
        EXPECT_EQ(groups->numEntries(), 1U);
    }
    EXPECT_EQ(keys(), (Names{L"Other"}));
    AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite, true)->erase(false);
    EXPECT_EQ(keys(), (Names{L"Key", L"Other"}));
}

TEST_F(Dictionaries, SettingReplacesAndErasesTheOld) {
    const AcDbObjectId old = put(L"Key");
    const AcDbObjectId fresh = put(L"KEY");
    EXPECT_TRUE(old.isErased());
    AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId(), AcDb::kForWrite);
    AcDbObjectId found;
    groups->getAt(L"Key", found);
    EXPECT_EQ(found, fresh);
    EXPECT_EQ(groups->numEntries(), 1U);

    AcDbXrecord stray;
    EXPECT_EQ(groups->setAt(L"", &stray, found), Acad::eInvalidKey);
    EXPECT_EQ(groups->setAt(L"x", nullptr, found), Acad::eNullObjectPointer);
    AcDbDictionary homeless;
    EXPECT_EQ(homeless.setAt(L"x", &stray, found), Acad::eNotInDatabase);
    const AcDbDatabase other;
    EXPECT_EQ(groups->setAt(L"x", Residence::peek(other.layerZero()), found), Acad::eWrongDatabase);
}

TEST_F(Dictionaries, RemoveAndRenameKeepTheRestFindable) {
    const AcDbObjectId a = put(L"A");
    const AcDbObjectId b = put(L"B");
    const AcDbObjectId c = put(L"C");
    AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId(), AcDb::kForWrite);
    AcDbObjectId removed;
    EXPECT_EQ(groups->remove(L"a", removed), Acad::eOk);
    EXPECT_EQ(removed, a);
    EXPECT_FALSE(a.isErased()) << "removing does not erase";
    EXPECT_EQ(groups->remove(L"a"), Acad::eKeyNotFound);
    EXPECT_EQ(groups->find(L"b"), b);
    EXPECT_EQ(groups->find(L"c"), c);

    EXPECT_FALSE(groups->setName(L"B", L"c"));
    EXPECT_FALSE(groups->setName(L"none", L"D"));
    EXPECT_TRUE(groups->setName(L"B", L"b2"));
    EXPECT_TRUE(groups->find(L"B").isNull());
    EXPECT_EQ(groups->find(L"B2"), b);
    destroy(c);
    EXPECT_TRUE(groups->setName(L"B2", L"C")) << "a deleted object's key is free";
    EXPECT_EQ(groups->find(L"C"), b);
    EXPECT_EQ(groups->remove(b), Acad::eOk);
    EXPECT_EQ(groups->numEntries(), 0U);
}

TEST_F(Dictionaries, DefaultAnswersForUnknownKeys) {
    auto* const dictionary = new AcDbDictionaryWithDefault;
    ASSERT_EQ(db.addAcDbObject(dictionary), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(dictionary->getAt(L"x", id), Acad::eKeyNotFound);
    const AcDbObjectId fallback = put(L"Normal");
    dictionary->setDefaultId(fallback);
    EXPECT_EQ(dictionary->getAt(L"x", id), Acad::eOk);
    EXPECT_EQ(id, fallback);
    EXPECT_FALSE(dictionary->has(L"x"));
    dictionary->close();
}

TEST_F(Dictionaries, ExtensionDictionaryComesAndGoes) {
    const AcDbObjectId id = addPoint(db);
    AcDbObjectPointer<AcDbPoint> point(id, AcDb::kForWrite);
    EXPECT_TRUE(point->extensionDictionary().isNull());
    ASSERT_EQ(point->createExtensionDictionary(), Acad::eOk);
    EXPECT_EQ(point->createExtensionDictionary(), Acad::eAlreadyInDb);
    const AcDbObjectId dictionaryId = point->extensionDictionary();
    {
        AcDbObjectPointer<AcDbDictionary> dictionary(dictionaryId, AcDb::kForWrite);
        ASSERT_EQ(dictionary.openStatus(), Acad::eOk);
        EXPECT_EQ(dictionary->ownerId(), id);
        EXPECT_TRUE(dictionary->isTreatElementsAsHard());
        AcDbObjectId entry;
        auto* const record = new AcDbXrecord;
        dictionary->setAt(L"X", record, entry);
        record->close();
    }
    EXPECT_EQ(point->releaseExtensionDictionary(), Acad::eContainerNotEmpty);
    AcDbObjectPointer<AcDbDictionary>(dictionaryId, AcDb::kForWrite)->remove(L"X");
    EXPECT_EQ(point->releaseExtensionDictionary(), Acad::eOk);
    EXPECT_TRUE(point->extensionDictionary().isNull());
    EXPECT_TRUE(dictionaryId.isErased());
    AcDbPoint homeless;
    EXPECT_EQ(homeless.createExtensionDictionary(), Acad::eNotInDatabase);
}

TEST_F(Dictionaries, MlineStylesOrderTheirElements) {
    AcDbMlineStyle style;
    EXPECT_EQ(style.setName(L""), Acad::eInvalidInput);
    EXPECT_EQ(style.setName(std::wstring(256, L'm').c_str()), Acad::eInvalidInput);
    EXPECT_EQ(style.setName(L"Wall"), Acad::eOk);
    EXPECT_STREQ(style.name(), L"Wall");
    int index = -1;
    style.addElement(index, -1.0, AcCmColor(), {});
    style.addElement(index, 1.0, AcCmColor(), {});
    EXPECT_EQ(index, 0) << "the greatest offset stands first";
    style.addElement(index, 0.0, AcCmColor(), {});
    EXPECT_EQ(index, 1);
    double offset = 0.0;
    AcCmColor color;
    AcDbObjectId linetype;
    EXPECT_EQ(style.getElementAt(2, offset, color, linetype), Acad::eOk);
    EXPECT_EQ(offset, -1.0);
    EXPECT_EQ(style.getElementAt(3, offset, color, linetype), Acad::eInvalidIndex);
    EXPECT_EQ(style.removeElementAt(-1), Acad::eInvalidIndex);
}

class DrawOrder : public CoreTest {
protected:
    void SetUp() override {
        for (AcDbObjectId& id : ids)
            id = addPoint(db);
        AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
        EXPECT_EQ(space->getSortentsTable(table, AcDb::kForWrite), Acad::eKeyNotFound);
        ASSERT_EQ(space->getSortentsTable(table, AcDb::kForWrite, true), Acad::eOk);
    }
    void TearDown() override {
        table->close();
        CoreTest::TearDown();
    }

    /// The points' letters in the order they are drawn.
    std::string order() const {
        AcDbObjectIdArray drawn;
        EXPECT_EQ(table->getFullDrawOrder(drawn), Acad::eOk);
        std::string letters;
        for (const AcDbObjectId id : drawn)
            letters += static_cast<char>('a' + (std::find(ids, ids + 5, id) - ids));
        return letters;
    }
    AcDbObjectIdArray pick(const char* letters) const {
        AcDbObjectIdArray picked;
        for (; *letters != '\0'; ++letters)
            picked.append(ids[*letters - 'a']);
        return picked;
    }

    AcDbObjectId ids[5];
    AcDbSortentsTable* table = nullptr;
};

TEST_F(DrawOrder, MovesTogetherKeepingTheirOwnOrder) {
    const struct {
        const char* name;
        std::function<Acad::ErrorStatus()> move;
        const char* expected;
    } cases[] = {
        {"to top", [this] { return table->moveToTop(pick("ca")); }, "bdeac"},
        {"to bottom", [this] { return table->moveToBottom(pick("ce")); }, "ecbda"},
        {"above", [this] { return table->moveAbove(pick("c"), ids[1]); }, "ebcda"},
        {"below", [this] { return table->moveBelow(pick("ac"), ids[4]); }, "caebd"},
        {"swap", [this] { return table->swapOrder(ids[2], ids[3]); }, "daebc"},
        {"as listed", [this] { return table->setRelativeDrawOrder(pick("cd")); }, "caebd"},
        {"back to the order of handles",
         [this] { return table->setRelativeDrawOrder(pick("abcde")); }, "abcde"},
    };
    EXPECT_EQ(order(), "abcde");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.move(), Acad::eOk);
        EXPECT_EQ(order(), c.expected);
    }
    EXPECT_FALSE(table->hasEntries()) << "entities in their own places need no entry";
}

TEST_F(DrawOrder, SortsWhatIsGiven) {
    table->moveToTop(pick("b"));
    AcDbObjectIdArray some = pick("bda");
    EXPECT_EQ(table->getRelativeDrawOrder(some), Acad::eOk);
    EXPECT_EQ(some, pick("adb"));
    AcDbObjectIdArray all;
    EXPECT_EQ(table->getRelativeDrawOrder(all), Acad::eOk);
    EXPECT_EQ(all, pick("acdeb"));

    bool before = false;
    EXPECT_EQ(table->firstEntityIsDrawnBeforeSecond(ids[0], ids[1], before), Acad::eOk);
    EXPECT_TRUE(before);
    EXPECT_EQ(table->firstEntityIsDrawnBeforeSecond(ids[1], ids[4], before), Acad::eOk);
    EXPECT_FALSE(before);
    AcDbHandle handle;
    EXPECT_EQ(table->getSortHandle(ids[1], handle), Acad::eOk);
    EXPECT_EQ(handle, Adesk::UInt64{ids[4].handle()}) << "handles go round among the block's own";
}

TEST_F(DrawOrder, RefusesStrangersAndPassesOverTheErased) {
    AcDbObjectIdArray strangers;
    strangers.append(db.layerZero());
    EXPECT_EQ(table->moveToTop(strangers), Acad::eInvalidInput);
    EXPECT_EQ(table->getRelativeDrawOrder(strangers), Acad::eInvalidInput);
    EXPECT_EQ(table->moveAbove(pick("a"), ids[0]), Acad::eInvalidInput);
    EXPECT_EQ(table->moveAbove(pick("a"), {}), Acad::eNullObjectId);
    erase(ids[2]);
    destroy(ids[3]);
    EXPECT_EQ(table->moveToTop(pick("ac")), Acad::eInvalidInput);
    EXPECT_EQ(table->moveToTop(pick("a")), Acad::eOk);
    EXPECT_EQ(order(), "bea");
}

} // namespace
