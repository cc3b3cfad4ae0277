// Symbol tables and blocks: names, hidden and erased records, iterators, what cannot be erased.
#include "core_support.h"

#include "db/block_reference.h"
#include "db/line.h"
#include "db/resbuf.h"
#include "rx/ac_string.h"

using namespace coretest;

namespace {

using Names = std::vector<std::wstring>;

class Tables : public CoreTest {
protected:
    AcDbObjectId addLayer(const ACHAR* name) {
        return addRecord<AcDbLayerTableRecord>(db.layerTableId(), name);
    }

    static Names walk(AcDbSymbolTableIterator& iterator, bool forwards = true,
                      bool skipDeleted = true) {
        Names names;
        for (; !iterator.done(); iterator.step(forwards, skipDeleted)) {
            AcDbObjectId id;
            EXPECT_EQ(iterator.getRecordId(id), Acad::eOk);
            names.push_back(Residence::peek<AcDbSymbolTableRecord>(id)->nameOf());
        }
        return names;
    }
};

TEST_F(Tables, AddRefusesWhatTheTableCannotHold) {
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForWrite);
    const auto tryName = [&](const ACHAR* name) {
        auto record = std::make_unique<AcDbLayerTableRecord>();
        if (const auto status = record->setName(name); status != Acad::eOk) return status;
        const auto status = layers->add(record.get());
        if (status == Acad::eOk) record.release()->close();
        return status;
    };
    const std::wstring longest(255, L'x');
    const struct {
        const char* what;
        std::wstring name;
        Acad::ErrorStatus expected;
    } cases[] = {
        {"plain", L"Wall", Acad::eOk},
        {"Chinese with blanks", L"\x5899 \x4F53 1", Acad::eOk},
        {"$ - _ #", L"A$-_#1", Acad::eOk},
        {"longest", longest, Acad::eOk},
        {"too long", longest + L"y", Acad::eInvalidInput},
        {"other case", L"WALL", Acad::eDuplicateRecordName},
        {"every drawing's", L"0", Acad::eDuplicateRecordName},
        {"empty", L"", Acad::eInvalidInput},
        {"only a star", L"*", Acad::eInvalidInput},
        {"star inside", L"a*b", Acad::eInvalidInput},
        {"control character", L"a\nb", Acad::eInvalidInput},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tryName(c.name.c_str()), c.expected) << c.what;
    for (const ACHAR bad : std::wstring_view(L"<>/\\\":;?|,=`"))
        EXPECT_EQ(tryName((std::wstring(L"a") + bad).c_str()), Acad::eInvalidInput) << int{bad};

    AcDbTextStyleTableRecord style;
    style.setName(L"Style");
    EXPECT_EQ(layers->add(&style), Acad::eWrongObjectType);
    EXPECT_EQ(layers->add(nullptr), Acad::eNullObjectPointer);
    AcDbLayerTableRecord nameless;
    EXPECT_EQ(layers->add(&nameless), Acad::eInvalidInput);
    AcDbLayerTable homeless;
    EXPECT_EQ(homeless.add(&nameless), Acad::eNotInDatabase);
}

TEST_F(Tables, AddedRecordStaysOpenForItsCaller) {
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForWrite);
    auto* const record = new AcDbLayerTableRecord;
    record->setName(L"Slab");
    AcDbObjectId id;
    ASSERT_EQ(layers->add(id, record), Acad::eOk);
    EXPECT_EQ(record->objectId(), id);
    EXPECT_EQ(record->ownerId(), db.layerTableId());
    EXPECT_TRUE(record->isNewObject());
    EXPECT_TRUE(record->isWriteEnabled());
    EXPECT_EQ(layers->add(record), Acad::eAlreadyInDb);
    record->close();
    EXPECT_FALSE(record->isNewObject());
}

TEST_F(Tables, FindsByNameInAnyCaseAndById) {
    const AcDbObjectId wall = addLayer(L"Wall");
    const AcDbObjectId gone = addLayer(L"Gone");
    erase(gone);

    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId());
    AcDbObjectId id;
    EXPECT_EQ(layers->getAt(L"wALL", id), Acad::eOk);
    EXPECT_EQ(id, wall);
    EXPECT_TRUE(layers->has(wall));
    EXPECT_FALSE(layers->has(gone));
    EXPECT_FALSE(layers->has(L"GONE"));
    EXPECT_FALSE(layers->has(db.continuousLinetype())) << "a record of another table";
    EXPECT_EQ(layers->getAt(L"gone", id), Acad::eKeyNotFound);
    EXPECT_EQ(id, wall) << "a refusal leaves the output";
    EXPECT_EQ(layers->getAt(L"gone", id, true), Acad::eOk);
    EXPECT_EQ(id, gone);
    EXPECT_EQ(layers->getAt(nullptr, id), Acad::eInvalidInput);

    AcDbLayerTableRecord* record = nullptr;
    EXPECT_EQ(layers->getAt(L"gone", record, AcDb::kForRead), Acad::eKeyNotFound);
    ASSERT_EQ(layers->getAt(L"gone", record, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(record->objectId(), gone);
    record->close();
}

TEST_F(Tables, RenamingMovesTheName) {
    const AcDbObjectId id = addLayer(L"Old");
    addLayer(L"Taken");
    AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForWrite);
    EXPECT_EQ(record->setName(L"TAKEN"), Acad::eDuplicateRecordName);
    EXPECT_EQ(record->setName(L"OLD"), Acad::eOk) << "its own name in another case";
    EXPECT_EQ(record->setName(L"New"), Acad::eOk);

    const ACHAR* own = nullptr;
    EXPECT_EQ(record->getName(own), Acad::eOk);
    EXPECT_STREQ(own, L"New");
    ACHAR* copy = nullptr;
    EXPECT_EQ(record->getName(copy), Acad::eOk);
    EXPECT_STREQ(copy, L"New");
    acutDelString(copy);
    EXPECT_EQ(copy, nullptr);
    AcString text;
    EXPECT_EQ(record->getName(text), Acad::eOk);
    EXPECT_EQ(text, L"New");

    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId());
    EXPECT_FALSE(layers->has(L"old"));
    EXPECT_TRUE(layers->has(L"new"));
}

TEST_F(Tables, ErasedNameIsFreeUntilTaken) {
    const AcDbObjectId first = addLayer(L"Again");
    erase(first);
    const AcDbObjectId second = addLayer(L"Again");

    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId());
    AcDbObjectId id;
    EXPECT_EQ(layers->getAt(L"Again", id, true), Acad::eOk);
    EXPECT_EQ(id, second) << "the record that lives comes before the erased one";
    AcDbObjectPointer<AcDbLayerTableRecord> record(first, AcDb::kForWrite, true);
    EXPECT_EQ(record->erase(false), Acad::eDuplicateRecordName);
    erase(second);
    EXPECT_EQ(record->erase(false), Acad::eOk);
}

TEST_F(Tables, IteratorsShowTheRecordsAskedFor) {
    addLayer(L"A");
    const AcDbObjectId hidden = addLayer(L"H");
    const AcDbObjectId erased = addLayer(L"E");
    const AcDbObjectId both = addLayer(L"HE");
    addLayer(L"B");
    for (const AcDbObjectId id : {hidden, both})
        AcDbObjectPointer<AcDbLayerTableRecord>(id, AcDb::kForWrite)->setIsHidden(true);
    erase(erased);
    erase(both);

    const struct {
        const char* name;
        bool forwards, skipDeleted, skipHidden;
        Names expected;
    } cases[] = {
        {"plain", true, true, true, {L"0", L"A", L"B"}},
        {"backward", false, true, true, {L"B", L"A", L"0"}},
        {"erased too", true, false, true, {L"0", L"A", L"E", L"B"}},
        {"hidden too", true, true, false, {L"0", L"A", L"H", L"B"}},
        {"all backward", false, false, false, {L"B", L"HE", L"E", L"H", L"A", L"0"}},
    };
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcDbLayerTableIterator* made = nullptr;
        ASSERT_EQ(layers->newIterator(made, c.forwards, c.skipDeleted), Acad::eOk);
        const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
        EXPECT_TRUE(iterator->skipHidden());
        iterator->setSkipHidden(c.skipHidden);
        EXPECT_EQ(walk(*iterator, c.forwards, c.skipDeleted), c.expected);
        iterator->start(c.forwards, c.skipDeleted);
        EXPECT_EQ(walk(*iterator, c.forwards, c.skipDeleted), c.expected) << "started again";
        AcDbObjectId id;
        EXPECT_EQ(iterator->getRecordId(id), Acad::eIteratorDone);
    }
}

TEST_F(Tables, HiddenLayerAtTheStartIsNotLost) {
    AcDbObjectPointer<AcDbLayerTableRecord>(db.layerZero(), AcDb::kForWrite)->setIsHidden(true);
    addLayer(L"A");
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId());
    AcDbSymbolTableIterator* made = nullptr;
    ASSERT_EQ(static_cast<AcDbSymbolTable*>(layers.object())->newIterator(made), Acad::eOk);
    const std::unique_ptr<AcDbSymbolTableIterator> iterator(made);
    static_cast<AcDbLayerTableIterator&>(*iterator).setSkipHidden(false);
    EXPECT_EQ(walk(*iterator), (Names{L"0", L"A"}));
}

TEST_F(Tables, HiddenLayersAnswerOnlyToThoseWhoAsk) {
    const AcDbObjectId hidden = addLayer(L"Secret");
    AcDbObjectPointer<AcDbLayerTableRecord>(hidden, AcDb::kForWrite)->setIsHidden(true);
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_FALSE(layers->has(L"secret"));
    EXPECT_FALSE(layers->has(hidden));
    EXPECT_EQ(layers->getAt(L"secret", id), Acad::eKeyNotFound);
    EXPECT_TRUE(layers->hasIncludingHidden(L"secret"));
    EXPECT_EQ(layers->getIncludingHidden(L"secret", id), Acad::eOk);
    EXPECT_EQ(id, hidden);
    AcDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(layers->getIncludingHidden(L"secret", record, AcDb::kForRead), Acad::eOk);
    record->close();

    AcDbLayerTableRecord twin;
    twin.setName(L"SECRET");
    EXPECT_EQ(layers->add(&twin), Acad::eDuplicateRecordName);
}

TEST_F(Tables, IteratorsSeekAndOpen) {
    const AcDbObjectId a = addLayer(L"A");
    addLayer(L"B");
    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId());
    AcDbLayerTableIterator iterator(*layers.object(), true, true);
    EXPECT_EQ(iterator.seek(a), Acad::eOk);
    EXPECT_EQ(walk(iterator), (Names{L"A", L"B"}));
    iterator.start();
    EXPECT_EQ(iterator.seek(db.continuousLinetype()), Acad::eKeyNotFound);
    AcDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(iterator.getRecord(record, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(record->objectId(), db.layerZero()) << "a vain seek stays where it was";
    record->close();
}

TEST_F(Tables, FixedRecordsCannotBeErased) {
    const AcDbObjectId current = addLayer(L"Current");
    db.setClayer(current);
    const AcDbObjectId fixed[] = {db.layerZero(),          current,
                                  db.byLayerLinetype(),    db.byBlockLinetype(),
                                  db.continuousLinetype(), db.modelSpaceId(),
                                  db.paperSpaceId(),       db.layerTableId(),
                                  db.blockTableId(),       db.namedObjectsDictionaryId()};
    for (const AcDbObjectId id : fixed) {
        SCOPED_TRACE(id.handle());
        AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
        EXPECT_EQ(object->erase(), Acad::eCannotBeErasedByCaller);
        EXPECT_FALSE(id.isErased());
    }
    db.setClayer(db.layerZero());
    erase(current);
}

TEST_F(Tables, AnonymousBlocksAreNumbered) {
    const auto nameOf = [&](const ACHAR* name) {
        const AcDbObjectId id = addRecord<AcDbBlockTableRecord>(db.blockTableId(), name);
        AcDbObjectPointer<AcDbBlockTableRecord> block(id);
        const bool anonymous = block->isAnonymous();
        return (anonymous ? L"" : L"named ") + block->nameOf();
    };
    EXPECT_EQ(nameOf(L"*U"), L"*U1");
    EXPECT_EQ(nameOf(L"*U"), L"*U2");
    EXPECT_EQ(nameOf(L"*U4"), L"named *U4");
    EXPECT_EQ(nameOf(L"*U"), L"*U3");
    EXPECT_EQ(nameOf(L"*U"), L"*U5") << "a number in use is passed over";
    EXPECT_EQ(nameOf(L"*D"), L"*D1");
    EXPECT_EQ(nameOf(L"Door"), L"named Door");
}

TEST_F(Tables, CurrentLayerCannotBeFrozen) {
    AcDbObjectPointer<AcDbLayerTableRecord> zero(db.layerZero(), AcDb::kForWrite);
    EXPECT_EQ(zero->setIsFrozen(true), Acad::eInvalidInput);
    EXPECT_FALSE(zero->isFrozen());
    AcDbObjectPointer<AcDbLayerTableRecord> other(addLayer(L"Other"), AcDb::kForWrite);
    EXPECT_EQ(other->setIsFrozen(true), Acad::eOk);
    EXPECT_TRUE(other->isFrozen());
}

TEST_F(Tables, ShapeFilesGoNameless) {
    AcDbObjectPointer<AcDbTextStyleTable> styles(db.textStyleTableId(), AcDb::kForWrite);
    for (int i = 0; i < 2; ++i) {
        auto* const shapes = new AcDbTextStyleTableRecord;
        shapes->setIsShapeFile(true);
        EXPECT_EQ(styles->add(shapes), Acad::eOk);
        shapes->close();
    }
    AcDbTextStyleTableRecord nameless;
    EXPECT_EQ(styles->add(&nameless), Acad::eInvalidInput);
}

TEST_F(Tables, BlocksTakeEntities) {
    const AcDbObjectId layer = addLayer(L"Current");
    db.setClayer(layer);
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    auto* const line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    AcDbObjectId id;
    ASSERT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
    EXPECT_EQ(line->objectId(), id);
    EXPECT_EQ(line->ownerId(), db.modelSpaceId());
    EXPECT_EQ(line->blockId(), db.modelSpaceId());
    EXPECT_EQ(line->layerId(), layer);
    EXPECT_TRUE(line->isWriteEnabled());
    EXPECT_EQ(space->appendAcDbEntity(line), Acad::eAlreadyInDb);
    line->close();

    auto* const placed = new AcDbLine;
    placed->setLayer(db.layerZero());
    ASSERT_EQ(space->appendAcDbEntity(placed), Acad::eOk);
    EXPECT_EQ(placed->layerId(), db.layerZero()) << "a layer that was set is kept";
    placed->close();

    EXPECT_EQ(space->appendAcDbEntity(nullptr), Acad::eNullEntityPointer);
    AcDbBlockTableRecord homeless;
    AcDbLine stray;
    EXPECT_EQ(homeless.appendAcDbEntity(&stray), Acad::eMustFirstAddBlockToDb);
    db.setClayer(db.layerZero());
}

TEST_F(Tables, BlockIteratorsStepOverErasedEntities) {
    const AcDbObjectId a = addPoint(db);
    const AcDbObjectId b = addPoint(db);
    const AcDbObjectId c = addPoint(db);
    erase(b);
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    const auto walkBlock = [&](bool forwards, bool skipDeleted) {
        std::vector<AcDbObjectId> ids;
        AcDbBlockTableRecordIterator iterator(*space.object(), forwards, skipDeleted);
        for (; !iterator.done(); iterator.step(forwards, skipDeleted)) {
            AcDbObjectId id;
            iterator.getEntityId(id);
            ids.push_back(id);
        }
        return ids;
    };
    EXPECT_THAT(walkBlock(true, true), testing::ElementsAre(a, c));
    EXPECT_THAT(walkBlock(false, true), testing::ElementsAre(c, a));
    EXPECT_THAT(walkBlock(true, false), testing::ElementsAre(a, b, c));

    AcDbBlockTableRecordIterator iterator(*space.object(), true, true);
    EXPECT_EQ(iterator.seek(c), Acad::eOk);
    EXPECT_EQ(iterator.seek(db.layerZero()), Acad::eNotInBlock);
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(iterator.getEntity(entity), Acad::eOk);
    EXPECT_EQ(entity->objectId(), c);
    entity->close();
    iterator.step();
    EXPECT_TRUE(iterator.done());
    EXPECT_EQ(iterator.getEntity(entity), Acad::eIteratorDone);
}

TEST_F(Tables, BlocksKnowTheirReferences) {
    const AcDbObjectId leaf = addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"Leaf");
    const AcDbObjectId branch = addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"Branch");
    const auto refer = [&](AcDbObjectId block, AcDbObjectId from) {
        AcDbObjectPointer<AcDbBlockTableRecord> holder(from, AcDb::kForWrite);
        auto* const reference = new AcDbBlockReference({0, 0, 0}, block);
        EXPECT_EQ(holder->appendAcDbEntity(reference), Acad::eOk);
        reference->close();
        return reference->objectId();
    };
    const AcDbObjectId inBranch = refer(leaf, branch);
    const AcDbObjectId inSpace = refer(leaf, db.modelSpaceId());
    const AcDbObjectId ofBranch = refer(branch, db.modelSpaceId());
    erase(refer(leaf, db.modelSpaceId()));

    AcDbObjectPointer<AcDbBlockTableRecord> block(leaf);
    AcDbObjectIdArray direct;
    EXPECT_EQ(block->getBlockReferenceIds(direct), Acad::eOk);
    EXPECT_THAT(direct, testing::UnorderedElementsAre(inBranch, inSpace));
    AcDbObjectIdArray all;
    EXPECT_EQ(block->getBlockReferenceIds(all, false), Acad::eOk);
    EXPECT_THAT(all, testing::UnorderedElementsAre(inBranch, inSpace, ofBranch));
}

TEST_F(Tables, DatabaseSettingsTakeOnlyTheirOwnRecords) {
    const AcDbDatabase other;
    const AcDbObjectId layer = addLayer(L"Other");
    EXPECT_EQ(db.setClayer(AcDbObjectId()), Acad::eNullObjectId);
    EXPECT_EQ(db.setClayer(other.layerZero()), Acad::eWrongDatabase);
    EXPECT_EQ(db.setClayer(db.continuousLinetype()), Acad::eWrongObjectType);
    EXPECT_EQ(db.setClayer(layer), Acad::eOk);
    EXPECT_EQ(db.clayer(), layer);
    EXPECT_EQ(db.setLtscale(0.0), Acad::eOutOfRange);
    EXPECT_EQ(db.setLtscale(50.0), Acad::eOk);
    EXPECT_EQ(db.ltscale(), 50.0);
    EXPECT_EQ(db.setInsunits(25), Acad::eOutOfRange);

    EXPECT_EQ(db.currentSpaceId(), db.modelSpaceId());
    db.settingsForWrite().tilemode = false;
    EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId());
    EXPECT_EQ(db.setCurrentSpaceId(db.modelSpaceId()), Acad::eOk);
    EXPECT_EQ(db.currentSpaceId(), db.modelSpaceId());
}

} // namespace
