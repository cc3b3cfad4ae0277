#include <dbdict.h>
#include <dbmlsty.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/acad_constants.h"
#include "frame_fixture.h"

namespace {

class SymbolTables : public FrameTest {};

TEST_F(SymbolTables, AreNamedByTheClassOfTheirRecords) {
    const struct {
        const char* name;
        AcRxClass *recordClass, *tableClass;
    } cases[] = {
        {"blocks", AcDbBlockTableRecord::desc(), AcDbBlockTable::desc()},
        {"dimension styles", AcDbDimStyleTableRecord::desc(), AcDbDimStyleTable::desc()},
        {"layers", AcDbLayerTableRecord::desc(), AcDbLayerTable::desc()},
        {"linetypes", AcDbLinetypeTableRecord::desc(), AcDbLinetypeTable::desc()},
        {"text styles", AcDbTextStyleTableRecord::desc(), AcDbTextStyleTable::desc()},
        {"applications", AcDbRegAppTableRecord::desc(), AcDbRegAppTable::desc()},
        {"coordinate systems", AcDbUCSTableRecord::desc(), AcDbUCSTable::desc()},
        {"views", AcDbViewTableRecord::desc(), AcDbViewTable::desc()},
        {"viewports", AcDbViewportTableRecord::desc(), AcDbViewportTable::desc()},
    };
    for (const auto& c : cases) {
        for (const AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite}) {
            for (AcDbDatabase* db : {database(), static_cast<AcDbDatabase*>(nullptr)}) {
                SCOPED_TRACE(c.name);
                AcDbSymbolTable* table = AcUtSymTbl::openSymbolTable(c.recordClass, mode, db);
                ASSERT_NE(table, nullptr);
                EXPECT_EQ(table->isA(), c.tableClass);
                EXPECT_EQ(table->isWriteEnabled(), mode == AcDb::kForWrite);
                table->close();
            }
        }
    }
    EXPECT_EQ(printed(), L"");
}

TEST_F(SymbolTables, RefuseOtherClassesWithAMessage) {
    for (AcRxClass* other : {AcDbEntity::desc(), AcDbSymbolTableRecord::desc(),
                             AcDbLayerTable::desc(), static_cast<AcRxClass*>(nullptr)}) {
        EXPECT_EQ(AcUtSymTbl::openSymbolTable(other, AcDb::kForRead, database()), nullptr);
        EXPECT_EQ(printed(), L"\nARX ERROR: eInvalidInput");
    }
    AcDbObjectIdArray ids;
    EXPECT_EQ(AcUtSymTbl::collectSymbolIds(AcDbEntity::desc(), ids, database()),
              Acad::eInvalidInput);
}

TEST_F(SymbolTables, ReportWhatTheHostRefuses) {
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database()->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    AcRxClass* kind = AcDbLayerTableRecord::desc();
    EXPECT_EQ(AcUtSymTbl::openSymbolTable(kind, AcDb::kForRead, database()), nullptr);
    EXPECT_EQ(printed(), L"\nARX ERROR: eWasOpenForWrite");
    AcDbObjectId id;
    EXPECT_EQ(AcUtSymTbl::nameToSymbolId(kind, L"0", id, database()), Acad::eInvalidInput);
    EXPECT_FALSE(AcUtSymTbl::symbolExists(kind, L"0", database()));
    EXPECT_EQ(AcUtSymTbl::addNewLayer(L"NEW", database()), Acad::eWasOpenForWrite);
    layers->close();
}

TEST_F(SymbolTables, FindNames) {
    const AcDbObjectId layer = addLayer(L"WALL");
    AcRxClass* kind = AcDbLayerTableRecord::desc();
    EXPECT_TRUE(AcUtSymTbl::symbolExists(kind, L"wall", database()));
    EXPECT_FALSE(AcUtSymTbl::symbolExists(kind, L"DOOR", database()));
    AcDbObjectId id;
    EXPECT_EQ(AcUtSymTbl::nameToSymbolId(kind, L"WALL", id, database()), Acad::eOk);
    EXPECT_EQ(id, layer);
    EXPECT_EQ(AcUtSymTbl::nameToSymbolId(kind, L"DOOR", id, database()), Acad::eKeyNotFound);

    {
        const WriteHandle<AcDbLayerTableRecord> record(layer);
        record->erase();
    }
    EXPECT_NE(AcUtSymTbl::nameToSymbolId(kind, L"WALL", id, database()), Acad::eOk);
    EXPECT_EQ(printed(), L"");
}

TEST_F(SymbolTables, GiveTheNamesOfRecords) {
    CString name = L"before";
    EXPECT_EQ(AcUtSymTbl::symbolIdToName(addLayer(L"WALL"), name), Acad::eOk);
    EXPECT_STREQ(name, L"WALL");

    EXPECT_EQ(AcUtSymTbl::symbolIdToName(AcDbObjectId::kNull, name), Acad::eNullObjectId);
    EXPECT_STREQ(name, L"AcDbObjectId::kNull");
    EXPECT_EQ(printed(), L"");

    EXPECT_EQ(AcUtSymTbl::symbolIdToName(addLine(), name), Acad::eInvalidInput);
    EXPECT_STREQ(name, L"AcDbObjectId::kNull");
    EXPECT_EQ(printed(), L"\nARX ERROR: eNotThatKindOfClass");
}

TEST_F(SymbolTables, GiveTheNamesOfMultilineStyles) {
    AcDbDictionary* styles = nullptr;
    ASSERT_EQ(database()->getMLStyleDictionary(styles, AcDb::kForRead), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(styles->getAt(AcadString::standard, id), Acad::eOk);
    styles->close();

    CString name;
    EXPECT_EQ(AcUtSymTbl::mlineStyleIdToName(id, name), Acad::eOk);
    EXPECT_STRCASEEQ(CStringA(name), "standard");
    EXPECT_EQ(AcUtSymTbl::mlineStyleIdToName(addLine(), name), Acad::eInvalidInput);
    EXPECT_EQ(printed(), L"\nARX ERROR: eNotThatKindOfClass");
}

TEST_F(SymbolTables, CollectHiddenRecordsButNoErasedOnes) {
    const AcDbObjectId plain = addLayer(L"PLAIN");
    const AcDbObjectId hidden = addLayer(L"HIDDEN");
    const AcDbObjectId erased = addLayer(L"ERASED");
    {
        const WriteHandle<AcDbLayerTableRecord> hiddenLayer(hidden);
        const WriteHandle<AcDbLayerTableRecord> erasedLayer(erased);
        hiddenLayer->setIsHidden(true);
        erasedLayer->erase();
    }
    AcDbObjectIdArray ids;
    ids.append(plain); // What is there stays.
    EXPECT_EQ(AcUtSymTbl::collectSymbolIds(AcDbLayerTableRecord::desc(), ids, database()),
              Acad::eOk);
    EXPECT_EQ(ids.length(), 4); // PLAIN, and layers 0, PLAIN and HIDDEN
    EXPECT_TRUE(ids.contains(hidden));
    EXPECT_TRUE(ids.contains(database()->layerZero()));
    EXPECT_FALSE(ids.contains(erased));

    AcDbObjectIdArray blocks;
    EXPECT_EQ(AcUtSymTbl::collectSymbolIds(AcDbBlockTableRecord::desc(), blocks, nullptr),
              Acad::eOk);
    EXPECT_TRUE(blocks.contains(database()->modelSpaceId()));
}

TEST_F(SymbolTables, TakeNewRecordsAndDeleteRefusedOnes) {
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database()->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
    const auto add = [&](const wchar_t* name) {
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        return AcUtSymTbl::addNewSymbolAndClose(layers, record.release());
    };
    EXPECT_EQ(add(L"NEW"), Acad::eOk);
    EXPECT_EQ(add(L"new"), Acad::eDuplicateRecordName);
    EXPECT_NE(AcUtSymTbl::addNewSymbolAndClose(layers, nullptr), Acad::eOk);
    EXPECT_TRUE(layers->isWriteEnabled());
    layers->close();
}

TEST_F(SymbolTables, AddLayersOnce) {
    EXPECT_EQ(AcUtSymTbl::addNewLayer(L"BOARD", nullptr), Acad::eOk);
    EXPECT_EQ(AcUtSymTbl::addNewLayer(L"board", database()), Acad::eOk);
    EXPECT_EQ(AcUtSymTbl::addNewLayer(L"a<b", database()), Acad::eInvalidInput);
    {
        const ReadHandle<AcDbLayerTableRecord> layer(addLayer(L"BOARD"));
        EXPECT_EQ(layer->linetypeObjectId(), database()->continuousLinetype());
        EXPECT_EQ(layer->color().colorIndex(), 7);
    }
    AcDbObjectIdArray ids;
    AcUtSymTbl::collectSymbolIds(AcDbLayerTableRecord::desc(), ids, database());
    EXPECT_EQ(ids.length(), 2);
}

TEST(AcadConstants, AreTheHostsOwnNames) {
    EXPECT_STREQ(AcadString::bylayer, L"ByLayer");
    EXPECT_STREQ(AcadString::byblock, L"ByBlock");
    EXPECT_STREQ(AcadString::none, L"*NONE*");
    EXPECT_STREQ(AcadString::varies1, L"*VARIES*");
    EXPECT_STREQ(AcadString::varies2, L"VARIES");
    EXPECT_STREQ(AcadString::nullStr, L"");
    EXPECT_STREQ(AcadVar::adserr, L"errno");
}

} // namespace
