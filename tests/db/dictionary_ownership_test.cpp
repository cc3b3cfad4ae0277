// What is erased together with its owner, and what comes back with it.
#include "data_support.h"

#include "db/xrecord.h"

using namespace datatest;

namespace {

class Ownership : public DataTest {
protected:
    template <class T>
    AcDbObjectId put(AcDbObjectId dictionary, const ACHAR* key, bool hard = false) {
        AcDbObjectPointer<AcDbDictionary> owner(dictionary, AcDb::kForWrite);
        auto* const made = new T;
        AcDbObjectId id;
        EXPECT_EQ(owner->setAt(key, made, id), Acad::eOk);
        if (auto* const inner = AcDbDictionary::cast(made)) inner->setTreatElementsAsHard(hard);
        made->close();
        return id;
    }
    static void bringBack(AcDbObjectId id) {
        ASSERT_EQ(AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite, true)->erase(false),
                  Acad::eOk);
    }

    AcDbObjectId root = db.namedObjectsDictionaryId();
};

TEST_F(Ownership, OwnedEntriesGoAndComeWithTheirDictionary) {
    const AcDbObjectId outer = put<AcDbDictionary>(root, L"outer", true);
    const AcDbObjectId inner = put<AcDbDictionary>(outer, L"inner", true);
    const AcDbObjectId record = put<AcDbXrecord>(inner, L"record");
    const AcDbObjectId gone = put<AcDbXrecord>(inner, L"gone");
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
    const AcDbObjectId soft = put<AcDbDictionary>(root, L"soft", false);
    const AcDbObjectId record = put<AcDbXrecord>(soft, L"record");
    erase(soft);
    EXPECT_FALSE(record.isErased());
    EXPECT_TRUE(record.isEffectivelyErased()) << "its owner is gone";
}

TEST_F(Ownership, OpenEntriesStay) {
    const AcDbObjectId hard = put<AcDbDictionary>(root, L"hard", true);
    const AcDbObjectId used = put<AcDbXrecord>(hard, L"used");
    const AcDbObjectId free = put<AcDbXrecord>(hard, L"free");
    const AcDbObjectPointer<AcDbObject> reader(used);
    erase(hard);
    EXPECT_FALSE(used.isErased());
    EXPECT_TRUE(free.isErased());
}

TEST_F(Ownership, ExtensionDictionariesGoWithTheirObject) {
    const AcDbObjectId point = addPoint(db);
    AcDbObjectPointer<AcDbObject>(point, AcDb::kForWrite)->createExtensionDictionary();
    const AcDbObjectId dictionary = AcDbObjectPointer<AcDbObject>(point)->extensionDictionary();
    const AcDbObjectId record = put<AcDbXrecord>(dictionary, L"record");
    erase(point);
    EXPECT_TRUE(dictionary.isErased());
    EXPECT_TRUE(record.isErased());
    bringBack(point);
    EXPECT_FALSE(dictionary.isErased());
    EXPECT_FALSE(record.isErased());
}

TEST_F(Ownership, RingsAndDepthDoNotMatter) {
    AcDbObjectId deepest = put<AcDbDictionary>(root, L"chain", true);
    const AcDbObjectId first = deepest;
    constexpr int kDepth = 20000;
    for (int i = 0; i < kDepth; ++i)
        deepest = put<AcDbDictionary>(deepest, L"next", true);
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
    const AcDbObjectId first = put<AcDbDictionary>(root, L"first");
    const AcDbObjectId second = put<AcDbDictionary>(root, L"second");
    for (const AcDbObjectId dictionary : {first, second}) {
        AcDbObjectId id;
        AcDbObjectPointer<AcDbDictionary>(dictionary, AcDb::kForWrite)
            ->setAt(L"stray", Residence::peek(stray), id);
        EXPECT_EQ(id, stray);
    }
    EXPECT_EQ(AcDbObjectPointer<AcDbObject>(stray)->ownerId(), first);
}

} // namespace
