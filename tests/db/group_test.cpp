// Groups of entities.
#include "data_support.h"

#include <functional>

#include "db/group.h"
#include "db/object_data.h"
#include "rx/ac_string.h"

using namespace datatest;

namespace {

class GroupTest : public DataTest {
protected:
    GroupTest() {
        for (AcDbObjectId& point : points)
            point = addPoint(db);
        group = make(L"Boards");
    }
    AcDbObjectId make(const ACHAR* name) {
        AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId(), AcDb::kForWrite);
        auto* const made = new AcDbGroup(L"some boards");
        AcDbObjectId id;
        EXPECT_EQ(groups->setAt(name, made, id), Acad::eOk);
        made->close();
        return id;
    }
    AcDbObjectIdArray pick(const char* letters) const {
        AcDbObjectIdArray picked;
        for (; *letters != '\0'; ++letters)
            picked.append(points[*letters - 'a']);
        return picked;
    }
    /// The letters of the members in order.
    std::string members() const {
        AcDbObjectIdArray ids;
        const AcDbObjectPointer<AcDbGroup> opened(group);
        EXPECT_EQ(opened->allEntityIds(ids), opened->numEntities());
        std::string letters;
        for (const AcDbObjectId id : ids)
            letters += static_cast<char>('a' + (std::find(points, points + 4, id) - points));
        return letters;
    }
    /// The letters of the points that name the group among their reactors.
    std::string marked() const {
        std::string letters;
        for (int i = 0; i < 4; ++i) {
            const auto ids = headless::ObjectData::reactors(*Residence::peek(points[i]));
            letters.append(static_cast<std::size_t>(std::count(ids.begin(), ids.end(), group)),
                           static_cast<char>('a' + i));
        }
        return letters;
    }
    std::wstring name() const {
        AcString text;
        AcDbObjectPointer<AcDbGroup>(group)->getName(text);
        return text.kwszPtr();
    }

    AcDbObjectId points[4];
    AcDbObjectId group;
};

TEST_F(GroupTest, KeepTheOrderOfTheirMembers) {
    using Change = std::function<Acad::ErrorStatus(AcDbGroup&)>;
    const struct {
        const char* name;
        Change change;
        Acad::ErrorStatus status;
        const char* members;
    } cases[] = {
        {"append", [&](AcDbGroup& g) { return g.append(pick("ca")); }, Acad::eOk, "ca"},
        {"prepend", [&](AcDbGroup& g) { return g.prepend(points[1]); }, Acad::eOk, "bca"},
        {"again", [&](AcDbGroup& g) { return g.append(pick("db")); }, Acad::eDuplicateKey, "bca"},
        {"twice", [&](AcDbGroup& g) { return g.append(pick("dd")); }, Acad::eDuplicateKey, "bca"},
        {"null", [&](AcDbGroup& g) { return g.append(AcDbObjectId()); }, Acad::eNullObjectId,
         "bca"},
        {"no entity", [&](AcDbGroup& g) { return g.append(db.layerZero()); }, Acad::eNotAnEntity,
         "bca"},
        {"insert", [&](AcDbGroup& g) { return g.insertAt(1, points[3]); }, Acad::eOk, "bdca"},
        {"beyond", [&](AcDbGroup& g) { return g.insertAt(9, points[3]); }, Acad::eInvalidIndex,
         "bdca"},
        {"remove", [&](AcDbGroup& g) { return g.remove(points[2]); }, Acad::eOk, "bda"},
        {"remove a stranger", [&](AcDbGroup& g) { return g.remove(pick("ac")); },
         Acad::eInvalidInput, "bda"},
        {"remove at", [&](AcDbGroup& g) { return g.removeAt(0); }, Acad::eOk, "da"},
        {"remove beyond", [&](AcDbGroup& g) { return g.removeAt(2); }, Acad::eInvalidIndex, "da"},
        {"replace", [&](AcDbGroup& g) { return g.replace(points[3], points[1]); }, Acad::eOk, "ba"},
        {"reverse", [&](AcDbGroup& g) { return g.reverse(); }, Acad::eOk, "ab"},
        {"clear", [&](AcDbGroup& g) { return g.clear(); }, Acad::eOk, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.change(*AcDbObjectPointer<AcDbGroup>(group, AcDb::kForWrite)), c.status);
        EXPECT_EQ(members(), c.members);
        std::string sorted = c.members;
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(marked(), sorted) << "members know their group";
    }
    AcDbGroup homeless;
    EXPECT_EQ(homeless.append(points[0]), Acad::eNotInDatabase);
}

TEST_F(GroupTest, PassOverErasedMembers) {
    AcDbObjectPointer<AcDbGroup>(group, AcDb::kForWrite)->append(pick("abcd"));
    erase(points[1]);
    EXPECT_EQ(members(), "acd");
    {
        const AcDbObjectPointer<AcDbGroup> opened(group);
        EXPECT_FALSE(opened->has(Residence::peek<AcDbEntity>(points[1])));
        EXPECT_TRUE(opened->has(Residence::peek<AcDbEntity>(points[2])));
        Adesk::UInt32 index = 0;
        EXPECT_EQ(opened->getIndex(points[2], index), Acad::eOk);
        EXPECT_EQ(index, 1U);
        EXPECT_EQ(opened->getIndex(points[1], index), Acad::eInvalidInput);
        const std::unique_ptr<AcDbGroupIterator> iterator(opened->newIterator());
        erase(points[2]);
        EXPECT_EQ(iterator->objectId(), points[0]);
        EXPECT_TRUE(iterator->next());
        EXPECT_EQ(iterator->objectId(), points[3]);
        EXPECT_FALSE(iterator->next());
        AcDbObject* object = nullptr;
        EXPECT_EQ(iterator->getObject(object, AcDb::kForRead), Acad::eIteratorDone);
    }
    AcDbObjectPointer<AcDbObject>(points[1], AcDb::kForWrite, true)->erase(false);
    EXPECT_EQ(members(), "abd");
}

TEST_F(GroupTest, ErasedGroupsLeaveNoTrace) {
    AcDbObjectPointer<AcDbGroup>(group, AcDb::kForWrite)->append(pick("ab"));
    const AcDbObjectPointer<AcDbObject> reader(points[0]); // does not stand in the way
    erase(group);
    EXPECT_EQ(marked(), "");
    AcDbObjectPointer<AcDbObject>(group, AcDb::kForWrite, true)->erase(false);
    EXPECT_EQ(marked(), "ab");
    EXPECT_EQ(members(), "ab");
}

TEST_F(GroupTest, AreNamedByTheirDictionary) {
    EXPECT_EQ(name(), L"Boards");
    const AcDbObjectId other = make(L"*");
    EXPECT_EQ(AcDbObjectPointer<AcDbDictionary>(db.groupDictionaryId())->keyOf(other), L"*A1");
    {
        AcDbObjectPointer<AcDbGroup> opened(group, AcDb::kForWrite);
        EXPECT_FALSE(opened->isAnonymous());
        EXPECT_STREQ(opened->description(), L"some boards");
        EXPECT_TRUE(opened->isSelectable());
        EXPECT_EQ(opened->setName(L""), Acad::eInvalidKey);
        EXPECT_EQ(opened->setName(L"*a1"), Acad::eDuplicateKey);
        EXPECT_EQ(opened->setName(L"Slabs"), Acad::eOk);
    }
    EXPECT_EQ(name(), L"Slabs");
    EXPECT_EQ(AcDbObjectPointer<AcDbGroup>(group, AcDb::kForWrite)->setAnonymous(), Acad::eOk);
    EXPECT_EQ(name(), L"*A2");
    EXPECT_TRUE(AcDbObjectPointer<AcDbGroup>(group)->isAnonymous());
    AcDbGroup homeless;
    EXPECT_EQ(homeless.setName(L"x"), Acad::eNotInDatabase);
}

} // namespace
