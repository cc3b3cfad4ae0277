// How objects come into databases and leave them: handles, stubs, deletion, leftovers.
#include "core_support.h"

#include <limits>

#include "db/opaque.h"
#include "db/resbuf.h"
#include "db/symbol_utilities.h"
#include "rx/ac_string.h"

using namespace coretest;

namespace {

class ResidenceTest : public CoreTest {
protected:
    std::vector<AcDbObjectId> walk(bool skipDeleted = true, bool backward = false) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
        AcDbBlockTableRecordIterator* made = nullptr;
        EXPECT_EQ(space->newIterator(made, !backward, skipDeleted), Acad::eOk);
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
        std::vector<AcDbObjectId> ids;
        for (; !iterator->done(); iterator->step(!backward, skipDeleted)) {
            AcDbObjectId id;
            EXPECT_EQ(iterator->getEntityId(id), Acad::eOk);
            ids.push_back(id);
        }
        return ids;
    }
};

TEST_F(ResidenceTest, HandlesAreFoundHoweverTheyAreSpread) {
    const struct {
        const char* name;
        Adesk::UInt64 first, factor, step;
    } cases[] = {
        {"counting up", 0x1000, 1, 1},
        {"counting down", 0x40000, 1, std::numeric_limits<Adesk::UInt64>::max()},
        {"doubling", 1, 2, 0},
        {"far apart", 0x100000000, 1, 0x123456789},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        AcDbDatabase drawing(false);
        std::vector<AcDbStub*> stubs;
        std::vector<Adesk::UInt64> handles;
        const int count = c.factor == 2 ? 63 : 20000;
        Adesk::UInt64 handle = c.first;
        for (int i = 0; i < count; ++i, handle = handle * c.factor + c.step) {
            EXPECT_EQ(Residence::find(drawing, handle), nullptr);
            handles.push_back(handle);
            stubs.push_back(Residence::announce(drawing, handle));
        }
        for (std::size_t i = 0; i < handles.size(); ++i) {
            ASSERT_EQ(Residence::find(drawing, handles[i]), stubs[i]);
            ASSERT_EQ(Residence::announce(drawing, handles[i]), stubs[i]);
            ASSERT_EQ(stubs[i]->handle, handles[i]);
        }
    }
}

TEST_F(ResidenceTest, NewObjectsTakeTheNextFreeHandle) {
    const Adesk::UInt64 seed = db.handseed();
    Residence::announce(db, seed + 1);
    const AcDbObjectId first = Residence::admit(db, std::make_unique<AcDbPoint>());
    EXPECT_EQ(first.handle(), seed + 2) << "an announced handle raises the seed";

    EXPECT_EQ(db.setHandseed(AcDbHandle(seed + 0x100)), Acad::eOk);
    EXPECT_EQ(db.setHandseed(AcDbHandle(1)), Acad::eOk);
    EXPECT_EQ(addPoint(db).handle(), seed + 0x100);

    const AcDbObjectId last = Residence::admit(db, std::make_unique<AcDbPoint>(), {},
                                               std::numeric_limits<Adesk::UInt64>::max());
    EXPECT_EQ(last.handle(), std::numeric_limits<Adesk::UInt64>::max());
    EXPECT_EQ(addPoint(db).handle(), seed + 0x101) << "the greatest handle must not end the supply";
}

TEST_F(ResidenceTest, AdmitsObjectsOfFilesClosedAndUnchanged) {
    const AcDbObjectId announced(Residence::announce(db, 0x500));
    auto point = std::make_unique<AcDbPoint>();
    point->setPosition({1, 2, 3});
    const AcDbObjectId id = Residence::admit(db, std::move(point), db.modelSpaceId(), 0x500);
    EXPECT_EQ(id, announced);
    const AcDbObject& object = *Residence::peek(id);
    EXPECT_EQ(object.ownerId(), db.modelSpaceId());
    EXPECT_FALSE(object.isReadEnabled());
    EXPECT_TRUE(Residence::isChanged(object)) << "it has no record to be written back from";
    Residence::setSource(*Residence::peek(id), {10, 20});
    EXPECT_FALSE(Residence::isChanged(object));
    {
        AcDbObjectPointer<AcDbPoint> writer(id, AcDb::kForWrite);
        EXPECT_FALSE(Residence::isChanged(object));
        writer->setPosition({0, 0, 0});
    }
    EXPECT_TRUE(Residence::isChanged(object)) << "a change outlasts the writer";

    const AcDbObjectId twin = Residence::admit(db, std::make_unique<AcDbPoint>(), {}, 0x500);
    EXPECT_NE(twin, id);
    EXPECT_EQ(Residence::find(db, 0x500), static_cast<AcDbStub*>(id));
    destroy(id);
    EXPECT_NE(Residence::admit(db, std::make_unique<AcDbPoint>(), {}, 0x500), id)
        << "the handle of a deleted object stays dead";
}

TEST_F(ResidenceTest, AnswersIdsByHandle) {
    AcDbObjectId id;
    const AcDbHandle unknown(0x7000);
    EXPECT_EQ(db.getAcDbObjectId(id, false, AcDbHandle()), Acad::eNullHandle);
    EXPECT_EQ(db.getAcDbObjectId(id, false, unknown), Acad::eUnknownHandle);
    EXPECT_EQ(db.getAcDbObjectId(id, true, unknown), Acad::eOk);
    EXPECT_EQ(id.handle(), unknown);
    EXPECT_EQ(db.getAcDbObjectId(id, false, unknown), Acad::eUnknownHandle)
        << "announcing does not make an object";
    EXPECT_EQ(db.getAcDbObjectId(id, false, db.layerZero().handle()), Acad::eOk);
    EXPECT_EQ(id, db.layerZero());
    EXPECT_EQ(db.getAcDbObjectId(id, true, db.layerZero().handle()), Acad::eHandleExists);
}

TEST(Handles, ReadAndWriteHexadecimalText) {
    const struct {
        const ACHAR* text;
        Adesk::UInt64 value;
        const ACHAR* written;
    } cases[] = {
        {L"1F", 0x1F, L"1F"},
        {L"00ab", 0xAB, L"AB"},
        {L"", 0, L"0"},
        {L"zz", 0, L"0"},
        {L"2Gx", 2, L"2"},
        {L"\x4E2D", 0, L"0"},
        {L"FFFFFFFFFFFFFFFF", 0xFFFFFFFFFFFFFFFF, L"FFFFFFFFFFFFFFFF"},
        {L"123456789", 0x123456789, L"123456789"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.text)));
        const AcDbHandle handle(c.text);
        EXPECT_EQ(handle, c.value);
        ACHAR buffer[17];
        ASSERT_TRUE(handle.getIntoAsciiBuffer(buffer));
        EXPECT_STREQ(buffer, c.written);
        EXPECT_FALSE(handle.getIntoAsciiBuffer(buffer, std::wcslen(c.written)));
    }
    EXPECT_EQ(AcDbHandle(0x23456789U, 0x1U), 0x123456789U);
    EXPECT_TRUE(AcDbHandle(static_cast<const ACHAR*>(nullptr)).isNull());
}

TEST_F(ResidenceTest, DeletingAResidentIsSurvivable) {
    const AcDbObjectId first = addPoint(db);
    const AcDbObjectId doomed = addPoint(db);
    const AcDbObjectId last = addPoint(db);

    AcDbObject* open = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(open, doomed, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(Residence::openCount(db), 1U);
    delete open;
    EXPECT_EQ(Residence::openCount(db), 0U);
    EXPECT_TRUE(doomed.isErased());
    EXPECT_TRUE(doomed.isValid());
    EXPECT_EQ(doomed.database(), &db);
    EXPECT_EQ(doomed.objectClass(), nullptr);
    EXPECT_EQ(acdbOpenAcDbObject(open, doomed, AcDb::kForRead, true), Acad::ePermanentlyErased);

    EXPECT_THAT(walk(), testing::ElementsAre(first, last));
    EXPECT_THAT(walk(false), testing::ElementsAre(first, last));
    EXPECT_THAT(walk(true, true), testing::ElementsAre(last, first));
    EXPECT_THAT(Residence::residents(db), testing::Not(testing::Contains(doomed)));
}

TEST_F(ResidenceTest, DeletedRecordsAndEntriesArePassedOver) {
    const AcDbObjectId layer = addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"WALL");
    const AcDbObjectId space = db.paperSpaceId();
    const AcDbObjectId dictionary = db.groupDictionaryId();
    destroy(layer);
    destroy(space);
    destroy(dictionary);

    AcDbObjectPointer<AcDbLayerTable> layers(db.layerTableId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_FALSE(layers->has(L"WALL"));
    EXPECT_EQ(layers->getAt(L"WALL", id, true), Acad::eKeyNotFound);
    auto* const again = new AcDbLayerTableRecord;
    again->setName(L"wall");
    EXPECT_EQ(layers->add(again), Acad::eOk) << "a deleted record gives its name free";
    again->close();
    EXPECT_TRUE(db.paperSpaceId().isNull());
    EXPECT_TRUE(db.groupDictionaryId().isNull());
}

TEST_F(ResidenceTest, LeftoversTellWhatIsOpenAndHow) {
    const AcDbObjectId point = addPoint(db);
    AcDbObject* reader = nullptr;
    AcDbObject* writer = nullptr;
    acdbOpenAcDbObject(reader, db.layerZero(), AcDb::kForRead);
    acdbOpenAcDbObject(reader, db.layerZero(), AcDb::kForRead);
    acdbOpenAcDbObject(writer, point, AcDb::kForWrite);

    const auto open = Residence::openObjects(db);
    ASSERT_EQ(open.size(), 2U);
    EXPECT_EQ(open[0].id, db.layerZero());
    EXPECT_EQ(open[0].kind, AcDbLayerTableRecord::desc());
    EXPECT_EQ(open[0].mode, AcDb::kForRead);
    EXPECT_EQ(open[0].readers, 2);
    EXPECT_EQ(open[1].id, point);
    EXPECT_EQ(open[1].mode, AcDb::kForWrite);
    reader = Residence::peek(db.layerZero());
    reader->close();
    reader->close();
    writer->close();
}

TEST_F(ResidenceTest, StatesKnowTheirDatabases) {
    EXPECT_THAT(state.databases, testing::ElementsAre(&db));
    {
        AcDbDatabase other(false);
        acdbHostApplicationServices()->setWorkingDatabase(&other);
        EXPECT_THAT(state.databases, testing::ElementsAre(&db, &other));
    }
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);

    auto inner = std::make_unique<headless::DbState>();
    const auto outliving = std::make_unique<AcDbDatabase>(false);
    EXPECT_THAT(inner->databases, testing::ElementsAre(outliving.get()));
    inner.reset();
    EXPECT_EQ(acdbHostApplicationServices(), &state.services);
}

TEST_F(ResidenceTest, EntityNamesAreIdsOfLivingDatabases) {
    const AcDbObjectId id = addPoint(db);
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    AcDbObjectId back;
    EXPECT_EQ(acdbGetObjectId(back, name), Acad::eOk);
    EXPECT_EQ(back, id);
    EXPECT_EQ(acdbGetAdsName(name, AcDbObjectId()), Acad::eNullObjectId);

    ads_name foreign;
    {
        const AcDbDatabase other;
        acdbGetAdsName(foreign, other.layerZero());
    }
    const ads_name bad[] = {
        {0, 0}, {42, 0}, {name[0] + 1, 0}, {name[0], 7}, {foreign[0], foreign[1]}};
    for (const ads_name& invalid : bad) {
        EXPECT_EQ(acdbGetObjectId(back, invalid), Acad::eInvalidAdsName);
        EXPECT_EQ(back, id);
    }
}

TEST_F(ResidenceTest, KeepsTheFileThatSourcesReferTo) {
    auto bytes = std::make_shared<std::string>("0\nPOINT\n8\n0\n");
    const std::weak_ptr<std::string> watched = bytes;
    {
        AcDbDatabase drawing(false);
        const std::string_view view = *bytes;
        drawing.keepSource(std::move(bytes), view);
        EXPECT_FALSE(watched.expired());
        EXPECT_EQ(drawing.sourceOf({2, 5}), "POINT");
        EXPECT_EQ(drawing.sourceOf({8, 5}), "") << "beyond the file";
        EXPECT_EQ(drawing.sourceOf({std::numeric_limits<std::uint64_t>::max(), 5}), "");
    }
    EXPECT_TRUE(watched.expired());
}

TEST_F(ResidenceTest, OpaqueKindsKeepTheirNames) {
    const auto nameOf = [&](std::unique_ptr<AcDbObject> object) {
        return headless::dxfName(*Residence::peek(Residence::admit(db, std::move(object))));
    };
    std::string name = "ACAD_TABLE";
    auto table = std::make_unique<headless::OpaqueEntity>(name);
    name = "overwritten";
    EXPECT_EQ(nameOf(std::move(table)), "ACAD_TABLE");
    EXPECT_EQ(nameOf(std::make_unique<headless::OpaqueObject>("SCALE")), "SCALE");
    EXPECT_EQ(nameOf(std::make_unique<AcDbPoint>()), "POINT");
    EXPECT_EQ(nameOf(std::make_unique<AcDbLayerTableRecord>()), "LAYER");
    EXPECT_EQ(headless::interned("SCALE").data(), headless::interned("SCALE").data());
}

TEST_F(ResidenceTest, SymbolUtilitiesAnswerByName) {
    const auto& util = *acdbSymUtil();
    AcDbObjectId id;
    EXPECT_EQ(util.getLayerId(id, L"0", &db), Acad::eOk);
    EXPECT_EQ(id, util.layerZeroId(&db));
    EXPECT_EQ(util.getLinetypeId(id, L"BYLAYER", &db), Acad::eOk);
    EXPECT_EQ(id, util.linetypeByLayerId(&db));
    EXPECT_EQ(util.getTextStyleId(id, L"missing", &db), Acad::eKeyNotFound);
    EXPECT_EQ(util.getBlockId(id, L"*Model_Space", nullptr), Acad::eNoDatabase);
    EXPECT_TRUE(util.isBlockPaperSpaceName(L"*PAPER_SPACE12"));
    EXPECT_FALSE(util.isBlockModelSpaceName(L"Model_Space"));
    EXPECT_EQ(util.validateSymbolName(L"a|b", true), Acad::eOk);
    EXPECT_EQ(util.validateSymbolName(L"a|b", false), Acad::eInvalidInput);
    AcString name;
    EXPECT_EQ(util.getSymbolName(name, util.linetypeContinuousId(&db)), Acad::eOk);
    EXPECT_STREQ(name, L"Continuous");
    EXPECT_EQ(util.getSymbolName(name, db.layerTableId()), Acad::eNotThatKindOfClass);
}

} // namespace
