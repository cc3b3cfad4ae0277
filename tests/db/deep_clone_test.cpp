// Clones with all they own, within a drawing and into another one.
#include "data_support.h"

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/group.h"
#include "db/id_mapping.h"
#include "db/line.h"
#include "db/sortents_table.h"
#include "db/xrecord.h"

using namespace datatest;

namespace {

class DeepClones : public DataTest {
protected:
    static AcDbObjectIdArray list(std::initializer_list<AcDbObjectId> ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId id : ids)
            array.append(id);
        return array;
    }
    static AcDbObjectId valueOf(const AcDbIdMapping& mapping, AcDbObjectId key) {
        AcDbIdPair pair;
        pair.setKey(key);
        return mapping.compute(pair) ? pair.value() : AcDbObjectId();
    }
    template <class T>
    static T* peek(AcDbObjectId id) {
        return Residence::peek<T>(id);
    }
    AcDbObjectId addGroup(const AcDbObjectIdArray& members) {
        AcDbObjectPointer<AcDbDictionary> groups(db.groupDictionaryId(), AcDb::kForWrite);
        auto* const group = new AcDbGroup;
        AcDbObjectId id;
        EXPECT_EQ(groups->setAt(L"G", group, id), Acad::eOk);
        EXPECT_EQ(group->append(members), Acad::eOk);
        group->close();
        return id;
    }
    static std::wstring values(AcDbObjectId record) {
        resbuf* chain = nullptr;
        AcDbObjectPointer<AcDbXrecord>(record)->rbChain(&chain);
        return shown(Chain(chain).get());
    }
    static std::wstring hex(AcDbObjectId id) {
        ACHAR digits[17];
        id.handle().getIntoAsciiBuffer(digits);
        return digits;
    }
};

TEST_F(DeepClones, ReferToEachOther) {
    const auto a = put(db.modelSpaceId(), new AcDbLine({0, 0, 0}, {1, 0, 0}))->objectId();
    const auto b = put(db.modelSpaceId(), new AcDbLine({0, 0, 0}, {2, 0, 0}))->objectId();
    const auto alone = put(db.modelSpaceId(), new AcDbLine)->objectId();
    const AcDbObjectId group = addGroup(list({a, b, alone}));
    AcDbObjectId record;
    {
        AcDbObjectPointer<AcDbLine> line(a, AcDb::kForWrite);
        line->setXData(chain(1001, L"APP", 1005, hex(b).c_str(), 1005, hex(alone).c_str()).get());
        line->createExtensionDictionary();
        AcDbObjectPointer<AcDbDictionary> dictionary(line->extensionDictionary(), AcDb::kForWrite);
        auto* const made = new AcDbXrecord;
        ads_name names[2];
        acdbGetAdsName(names[0], b);
        acdbGetAdsName(names[1], alone);
        made->setFromRbChain(*chain(330, names[0], 330, names[1]));
        ASSERT_EQ(dictionary->setAt(L"DATA", made, record), Acad::eOk);
        made->close();
    }
    AcDbIdMapping mapping;
    ASSERT_EQ(db.deepCloneObjects(list({a, b}), db.modelSpaceId(), mapping, true), Acad::eOk);
    ASSERT_EQ(db.deepCloneObjects(list({group}), db.groupDictionaryId(), mapping), Acad::eOk);

    const AcDbObjectId newA = valueOf(mapping, a);
    const AcDbObjectId newB = valueOf(mapping, b);
    const AcDbObjectId newGroup = valueOf(mapping, group);
    EXPECT_EQ(peek<AcDbLine>(newB)->ownerId(), db.modelSpaceId());
    EXPECT_EQ(shown(Chain(AcDbObjectPointer<AcDbLine>(newA)->xData()).get()),
              L"1001=APP 1005=" + hex(newB) + L" 1005=" + hex(alone));
    const auto* const data = peek<AcDbDictionary>(peek<AcDbLine>(newA)->extensionDictionary());
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->ownerId(), newA);
    EXPECT_EQ(data->find(L"DATA"), valueOf(mapping, record));
    ads_name wanted[2];
    acdbGetAdsName(wanted[0], newB);
    acdbGetAdsName(wanted[1], alone);
    EXPECT_EQ(values(data->find(L"DATA")), shown(chain(330, wanted[0], 330, wanted[1]).get()));
    EXPECT_EQ(peek<AcDbGroup>(newGroup)->memberIds(), (std::vector{newA, newB, alone}));
    EXPECT_EQ(headless::ObjectData::reactors(*peek<AcDbLine>(newA)), std::vector{newGroup});
    EXPECT_EQ(peek<AcDbDictionary>(db.groupDictionaryId())->keyOf(newGroup), L"*A1");
}

TEST_F(DeepClones, TakeBlocksWithTheirOrderAndNamesakes) {
    const auto blockId = addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"*U");
    put(blockId, new AcDbLine);
    const auto upper = put(blockId, new AcDbLine({0, 0, 0}, {9, 0, 0}))->objectId();
    put(blockId, new AcDbBlockReference({0, 0, 0}, blockId)); // Within itself.
    {
        AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
        AcDbSortentsTable* order = nullptr;
        ASSERT_EQ(block->getSortentsTable(order, AcDb::kForWrite, true), Acad::eOk);
        order->moveToBottom(list({upper}));
        order->close();
    }
    AcDbIdMapping mapping;
    ASSERT_EQ(db.deepCloneObjects(list({blockId}), db.blockTableId(), mapping), Acad::eOk);
    const AcDbObjectId copy = valueOf(mapping, blockId);
    const auto* const block = peek<AcDbBlockTableRecord>(copy);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->nameOf(), L"*U2");
    ASSERT_EQ(block->entityIds().size(), 3U);
    EXPECT_EQ(peek<AcDbBlockReference>(block->entityIds()[2])->blockOf(), copy);
    AcDbSortentsTable* order = nullptr;
    ASSERT_EQ(AcDbObjectPointer<AcDbBlockTableRecord>(copy)->getSortentsTable(order), Acad::eOk);
    AcDbObjectIdArray drawn;
    order->getFullDrawOrder(drawn);
    EXPECT_EQ(order->blockId(), copy);
    EXPECT_EQ(drawn[0], valueOf(mapping, upper));
    order->close();
}

/// A drawing with a reference to a block whose line is on a layer of its own.
class OtherDrawing : public DeepClones {
protected:
    OtherDrawing() {
        layer = addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"WALL");
        AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setDescription(L"mine");
        block = addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"DOOR");
        auto* const line = new AcDbLine({0, 0, 0}, {4, 0, 0});
        line->setLayer(layer);
        put(block, line);
        auto* const made = new AcDbBlockReference({1, 2, 0}, block);
        auto* const attribute = new AcDbAttribute({0, 0, 0}, L"7", L"NUMBER");
        attribute->setLayer(layer);
        made->setLayer(db.layerZero());
        made->appendAttribute(attribute);
        reference = put(db.modelSpaceId(), made)->objectId();
        AcDbObjectPointer<AcDbBlockReference>(reference, AcDb::kForWrite)
            ->setXData(chain(1001, L"Other", 1070, 1).get());
    }
    /// The layer of the only line in that drawing's block of the name.
    std::wstring lineLayer(const ACHAR* blockName) {
        const auto* const blocks = peek<AcDbBlockTable>(other.blockTableId());
        const auto* const door = peek<AcDbBlockTableRecord>(blocks->findRecord(blockName));
        if (door == nullptr) return L"no block";
        std::wstring layers;
        for (const AcDbObjectId id : door->entityIds()) {
            if (!id.isErased())
                layers += peek<AcDbLayerTableRecord>(peek<AcDbLine>(id)->layerId())->nameOf();
        }
        return layers;
    }
    Acad::ErrorStatus copy(AcDb::DuplicateRecordCloning duplicates) {
        return db.wblockCloneObjects(list({reference}), other.modelSpaceId(), mapping, duplicates);
    }

    AcDbObjectId layer, block, reference;
    AcDbDatabase other;
    AcDbIdMapping mapping;
};

TEST_F(OtherDrawing, GetsWhatTheClonesNeed) {
    ASSERT_EQ(copy(AcDb::kDrcIgnore), Acad::eOk);
    EXPECT_EQ(lineLayer(L"DOOR"), L"WALL");
    const auto* const clone = peek<AcDbBlockReference>(valueOf(mapping, reference));
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->database(), &other);
    EXPECT_EQ(clone->blockOf(), valueOf(mapping, block));
    EXPECT_EQ(clone->layerId(), other.layerZero());
    EXPECT_FALSE(peek<AcDbRegAppTable>(other.regAppTableId())->findRecord(L"Other").isNull());
    AcDbObjectPointer<AcDbBlockReference> opened(clone->objectId());
    const std::unique_ptr<AcDbObjectIterator> attributes(opened->attributeIterator());
    EXPECT_EQ(peek<AcDbAttribute>(attributes->objectId())->layerId(), valueOf(mapping, layer));
}

TEST_F(OtherDrawing, KeepsReplacesOrRenamesWhatItHas) {
    const auto own = addRecord<AcDbBlockTableRecord>(other.blockTableId(), L"Door");
    put(own, new AcDbLine);
    ASSERT_EQ(copy(AcDb::kDrcIgnore), Acad::eOk);
    EXPECT_EQ(lineLayer(L"DOOR"), L"0");
    EXPECT_EQ(peek<AcDbBlockReference>(valueOf(mapping, reference))->blockOf(), own);

    mapping = {};
    ASSERT_EQ(copy(AcDb::kDrcMangleName), Acad::eOk);
    EXPECT_EQ(lineLayer(L"DOOR"), L"0");
    EXPECT_EQ(lineLayer(L"$0$DOOR"), L"$0$WALL") << "renamed for the same reason";

    mapping = {};
    ASSERT_EQ(copy(AcDb::kDrcReplace), Acad::eOk);
    EXPECT_EQ(lineLayer(L"DOOR"), L"WALL");
    EXPECT_EQ(peek<AcDbBlockReference>(valueOf(mapping, reference))->blockOf(), own);
}

TEST_F(OtherDrawing, IsLeftAloneByRefusals) {
    const struct {
        const char* name;
        AcDbObjectId id, owner;
        Acad::ErrorStatus status;
    } cases[] = {
        {"no owner", reference, {}, Acad::eNullObjectId},
        {"no object", {}, other.modelSpaceId(), Acad::eNullObjectId},
        {"an object of its own", other.layerZero(), other.layerTableId(), Acad::eWrongDatabase},
        {"not another drawing", reference, db.modelSpaceId(), Acad::eWrongDatabase},
        {"a layer among entities", layer, other.modelSpaceId(), Acad::eNotAnEntity},
        {"a layer among blocks", layer, other.blockTableId(), Acad::eWrongObjectType},
        {"an entity in a dictionary", reference, other.groupDictionaryId(), Acad::eWrongObjectType},
    };
    const long objects = other.approxNumObjects();
    for (const auto& c : cases) {
        AcDbIdMapping none;
        EXPECT_EQ(db.wblockCloneObjects(list({c.id}), c.owner, none, AcDb::kDrcIgnore), c.status)
            << c.name;
    }
    erase(reference);
    EXPECT_EQ(copy(AcDb::kDrcIgnore), Acad::eWasErased);
    EXPECT_EQ(other.approxNumObjects(), objects);
}

TEST_F(OtherDrawing, TakesOneObjectByItself) {
    const struct {
        const char* name;
        AcDbObjectId source;
        AcRxObject* owner;
        AcDbObjectId place;
    } cases[] = {
        {"a block into a drawing, with what stands in it", block, &other, other.blockTableId()},
        {"an entity into its drawing's other space", reference, peek<AcDbObject>(db.paperSpaceId()),
         db.paperSpaceId()},
        {"an entity into a drawing", reference, &other, other.modelSpaceId()},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcDbIdMapping pairs;
        AcDbObjectPointer<AcDbObject> source(c.source);
        const auto cloned = [&](AcDbObject*& clone) {
            return c.owner == &other ? source->wblockClone(c.owner, clone, pairs)
                                     : source->deepClone(AcDbObject::cast(c.owner), clone, pairs);
        };
        AcDbObject* clone = nullptr;
        ASSERT_EQ(cloned(clone), Acad::eOk);
        ASSERT_NE(clone, nullptr);
        EXPECT_TRUE(clone->isWriteEnabled());
        EXPECT_EQ(clone->ownerId(), c.place);
        EXPECT_EQ(valueOf(pairs, c.source), clone->objectId());
        EXPECT_EQ(clone->close(), Acad::eOk);
        AcDbObject* again = clone;
        EXPECT_EQ(cloned(again), Acad::eOk);
        EXPECT_EQ(again, nullptr) << "the mapping tells of the clone";
    }
    EXPECT_EQ(lineLayer(L"DOOR"), L"WALL");
}

TEST_F(OtherDrawing, LeavesWhatAnOwnerKnowsItselfUnlisted) {
    AcDbObjectPointer<AcDbBlockReference> source(reference);
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.paperSpaceId(), AcDb::kForWrite);
    const std::size_t listed = space->entityIds().size();
    AcDbObject* clone = nullptr;
    ASSERT_EQ(source->deepClone(space, clone, mapping, false), Acad::eOk);
    EXPECT_EQ(clone->ownerId(), db.paperSpaceId());
    EXPECT_EQ(space->entityIds().size(), listed);
    clone->close();
}

TEST_F(OtherDrawing, TakesNoObjectWhereItDoesNotBelong) {
    const AcDbLine loose;
    AcDbLine nowhere;
    const struct {
        const char* name;
        AcRxObject* owner;
        Acad::ErrorStatus deep, wblock;
    } cases[] = {
        {"no owner", nullptr, Acad::eNullObjectPointer, Acad::eNullObjectPointer},
        {"an owner in no drawing", &nowhere, Acad::eNotInDatabase, Acad::eNotInDatabase},
        {"a table", peek<AcDbObject>(db.layerTableId()), Acad::eWrongObjectType,
         Acad::eWrongDatabase},
        {"a table there", peek<AcDbObject>(other.layerTableId()), Acad::eWrongDatabase,
         Acad::eWrongObjectType},
    };
    AcDbObjectPointer<AcDbObject> source(reference);
    for (const auto& c : cases) {
        AcDbObject* clone = source.object();
        EXPECT_EQ(source->deepClone(AcDbObject::cast(c.owner), clone, mapping), c.deep) << c.name;
        EXPECT_EQ(clone, nullptr) << c.name;
        EXPECT_EQ(source->wblockClone(c.owner, clone, mapping), c.wblock) << c.name;
    }
    AcDbObject* clone = nullptr;
    EXPECT_EQ(loose.wblockClone(&other, clone, mapping), Acad::eNotInDatabase);
    EXPECT_TRUE(mapping.pairs().empty());
}

} // namespace
