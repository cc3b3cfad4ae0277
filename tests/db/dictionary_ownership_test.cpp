// What is erased together with its owner, and what comes back with it.
#include "data_support.h"

#include "db/xrecord.h"

using namespace datatest;

namespace {

class Ownership : public DataTest {
protected:
    /// Enters a new object, which is closed.
    static AcDbObjectId put(AcDbObjectId dictionary, const ACHAR* key, AcDbObject* made) {
        AcDbObjectPointer<AcDbDictionary> owner(dictionary, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(owner->setAt(key, made, id), Acad::eOk);
        made->close();
        return id;
    }
    static AcDbObjectId putRecord(AcDbObjectId dictionary, const ACHAR* key) {
        return put(dictionary, key, new AcDbXrecord);
    }
    static AcDbObjectId putDictionary(AcDbObjectId dictionary, const ACHAR* key, bool hard) {
        auto* const made = new AcDbDictionary;
        made->setTreatElementsAsHard(hard);
        return put(dictionary, key, made);
    }
    static void bringBack(AcDbObjectId id) {
        ASSERT_EQ(AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite, true)->erase(false),
                  Acad::eOk);
    }

    AcDbObjectId root = db.namedObjectsDictionaryId();
};

TEST_F(Ownership, OwnedEntriesGoAndComeWithTheirDictionary) {
    const AcDbObjectId outer = putDictionary(root, L"outer", true);
    const AcDbObjectId inner = putDictionary(outer, L"inner", true);
    const AcDbObjectId record = putRecord(inner, L"record");
    const AcDbObjectId gone = putRecord(inner, L"gone");
    erase(gone);
    erase(outer);
    EXPECT_TRUE(inner.isErased());
    EXPECT_TRUE(record.isErased());
    bringBack(outer);
    EXPECT_FALSE(inner.isErased());
    EXPECT_FALSE(record.isErased());
    EXPECT_TRUE(gone.isErased()) << "it was erased for itself";
    erase(record);
    bringBack(record);
    EXPECT_FALSE(record.isErased());
}

TEST_F(Ownership, NamedEntriesStay) {
    const AcDbObjectId soft = putDictionary(root, L"soft", false);
    const AcDbObjectId record = putRecord(soft, L"record");
    erase(soft);
    EXPECT_FALSE(record.isErased());
    EXPECT_TRUE(record.isEffectivelyErased()) << "its owner is gone";
}

TEST_F(Ownership, OpenEntriesStay) {
    const AcDbObjectId hard = putDictionary(root, L"hard", true);
    const AcDbObjectId used = putRecord(hard, L"used");
    const AcDbObjectId free = putRecord(hard, L"free");
    const AcDbObjectPointer<AcDbObject> reader(used);
    erase(hard);
    EXPECT_FALSE(used.isErased());
    EXPECT_TRUE(free.isErased());
}

TEST_F(Ownership, ExtensionDictionariesGoWithTheirObject) {
    const AcDbObjectId point = addPoint(db);
    AcDbObjectPointer<AcDbObject>(point, AcDb::kForWrite)->createExtensionDictionary();
    const AcDbObjectId dictionary = AcDbObjectPointer<AcDbObject>(point)->extensionDictionary();
    const AcDbObjectId record = putRecord(dictionary, L"record");
    erase(point);
    EXPECT_TRUE(dictionary.isErased());
    EXPECT_TRUE(record.isErased());
    bringBack(point);
    EXPECT_FALSE(dictionary.isErased());
    EXPECT_FALSE(record.isErased());
}

TEST_F(Ownership, RingsAndDepthDoNotMatter) {
    AcDbObjectId deepest = putDictionary(root, L"chain", true);
    const AcDbObjectId first = deepest;
    constexpr int kDepth = 20000;
    for (int i = 0; i < kDepth; ++i)
        deepest = putDictionary(deepest, L"next", true);
    AcDbObjectId entered;
    AcDbObjectPointer<AcDbDictionary>(deepest, AcDb::kForWrite)
        ->setAt(L"ring", Residence::peek(first), entered);
    erase(first);
    EXPECT_TRUE(deepest.isErased());
    bringBack(first);
    EXPECT_FALSE(deepest.isErased());
    EXPECT_FALSE(first.isErased());
}

TEST_F(Ownership, StrayObjectsFindAnOwner) {
    AcDbObjectId stray;
    auto* const record = new AcDbXrecord;
    ASSERT_EQ(db.addAcDbObject(stray, record), Acad::eOk);
    record->close();
    const AcDbObjectId first = putDictionary(root, L"first", false);
    const AcDbObjectId second = putDictionary(root, L"second", false);
    for (const AcDbObjectId dictionary : {first, second}) {
        AcDbObjectId id;
        AcDbObjectPointer<AcDbDictionary>(dictionary, AcDb::kForWrite)
            ->setAt(L"stray", Residence::peek(stray), id);
        EXPECT_EQ(id, stray);
    }
    EXPECT_EQ(AcDbObjectPointer<AcDbObject>(stray)->ownerId(), first);
}

} // namespace
