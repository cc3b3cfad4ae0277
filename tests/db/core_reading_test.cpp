// Objects that fill themselves from records, and the values of groups.
#include "core_support.h"

#include <cstring>
#include <numbers>

#include "db/mline_style.h"
#include "db/resbuf.h"
#include "db/sortents_table.h"
#include "db/xrecord.h"

using namespace coretest;
using headless::DxfTag;

namespace {

class Reading : public CoreTest {
protected:
    template <class T>
    std::unique_ptr<T> read(const Groups& groups) {
        auto object = std::make_unique<T>();
        filer.give(groups);
        EXPECT_EQ(object->dxfInFields(&filer), Acad::eOk);
        return object;
    }
    AcDbObjectId idOf(Adesk::UInt64 handle) {
        return AcDbObjectId(Residence::announce(db, handle));
    }

    GroupFiler filer{db};
};

TEST(DxfValues, AreReadFromTheirText) {
    const struct {
        const char* text;
        double real;
        std::int64_t integer;
        std::uint64_t handle;
    } cases[] = {
        {"  12 ", 12.0, 12, 0x12},
        {"-7\r", -7.0, -7, 0},
        {"+3.5", 3.5, 3, 3},
        {"1e3", 1000.0, 1, 0x1E3},
        {"2F", 2.0, 2, 0x2F},
        {"abc", 0.0, 0, 0xABC},
        {"", 0.0, 0, 0},
        {"1e999", 0.0, 1, 0x1E999},
        {"nan", 0.0, 0, 0},
        {"inf", 0.0, 0, 0},
        {"99999999999999999999", 99999999999999999999.0, 0, 0},
        {"-1.#IND", -1.0, -1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        DxfTag tag;
        tag.bytes = c.text;
        tag.length = static_cast<std::uint32_t>(std::strlen(c.text));
        EXPECT_EQ(tag.real(), c.real);
        EXPECT_EQ(tag.integer(), c.integer);
        EXPECT_EQ(tag.handle(), c.handle);
    }
}

TEST(DxfValues, OfBinaryFilesAreNumbersAlready) {
    DxfTag real;
    real.kind = DxfTag::Kind::kReal;
    real.number = -2.75;
    EXPECT_EQ(real.real(), -2.75);
    EXPECT_EQ(real.integer(), -2);
    EXPECT_EQ(real.text(), "");
    real.number = 1e300;
    EXPECT_EQ(real.integer(), 0);
    DxfTag whole;
    whole.kind = DxfTag::Kind::kInteger;
    whole.whole = 300;
    EXPECT_EQ(whole.real(), 300.0);
    EXPECT_EQ(whole.integer(), 300);
    EXPECT_TRUE(whole.flag());
}

TEST_F(Reading, SubclassesEndAtTheNextMarker) {
    const auto tags = filer.tagsOf("5=1F|100=A|40=1|40=2|100=B|40=3");
    const headless::DxfRecord record(tags);
    EXPECT_EQ(record.subclass("A").size(), 2U);
    ASSERT_EQ(record.subclass("B").size(), 1U);
    EXPECT_EQ(record.subclass("B")[0].real(), 3.0);
    EXPECT_EQ(record.subclass("C").size(), 6U) << "old files have no markers";
    EXPECT_EQ(record.find(40)->real(), 1.0);
    EXPECT_EQ(record.find(41), nullptr);
}

TEST_F(Reading, OwnerStandsBeforeTheSubclasses) {
    const auto sorter = read<AcDbSortentsTable>("330=A1|100=AcDbSortentsTable|330=A2|331=A3|5=A4");
    EXPECT_EQ(sorter->ownerId(), idOf(0xA1));
    EXPECT_EQ(sorter->blockId(), idOf(0xA2));
    EXPECT_EQ(sorter->sortHandleOf(idOf(0xA3)), 0xA4U);
    EXPECT_EQ(sorter->sortHandleOf(idOf(0xA5)), 0xA5U);
}

TEST_F(Reading, LayerStates) {
    const struct {
        const char* name;
        Groups groups;
        const char* states; // off, frozen, new-viewport-frozen, locked, plotted, hidden
        int color, lineWeight;
    } cases[] = {
        {"plain R12", "2=W|70=0|62=3|6=CONTINUOUS", "p", 3, -3},
        {"off by negative colour", "2=W|70=0|62=-5", "op", 5, -3},
        {"frozen", "2=W|70=1|62=7", "fp", 7, -3},
        {"frozen in new viewports", "2=W|70=2|62=7", "vp", 7, -3},
        {"locked", "2=W|70=68|62=7", "lp", 7, -3},
        {"all", "2=W|70=7|62=-7|290=0", "ofvl", 7, -3},
        {"lineweight", "2=W|62=1|370=50", "p", 1, 50},
        {"odd lineweight", "2=W|62=1|370=51", "p", 1, -3},
        {"no such colour", {{2, "W"}, {62, "999"}}, "p", 7, -3},
        {"colour 0", {{2, "W"}, {62, "0"}}, "p", 7, -3},
        {"measuring points of old files", {{2, "DEFPOINTS"}, {62, "7"}}, "", 7, -3},
        {"a program's own", {{2, "*ADSK_SYSTEM_LIGHTS"}, {62, "7"}}, "ph", 7, -3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto layer = read<AcDbLayerTableRecord>(c.groups);
        std::string states;
        if (layer->isOff()) states += 'o';
        if (layer->isFrozen()) states += 'f';
        if (layer->VPDFLT()) states += 'v';
        if (layer->isLocked()) states += 'l';
        if (layer->isPlottable()) states += 'p';
        if (layer->isHidden()) states += 'h';
        EXPECT_EQ(states, c.states);
        EXPECT_EQ(layer->color().colorIndex(), c.color);
        EXPECT_EQ(layer->lineWeight(), c.lineWeight);
    }
    EXPECT_EQ(filer.reports.size(), 3U);
    const auto painted = read<AcDbLayerTableRecord>("2=W|420=1122867|62=-1");
    EXPECT_TRUE(painted->isOff());
    EXPECT_EQ(painted->color().red(), 0x11);
    EXPECT_EQ(painted->color().green(), 0x22);
    EXPECT_EQ(painted->color().blue(), 0x33);
    const auto lined = read<AcDbLayerTableRecord>({{2, "W"}, {6, "continuous"}});
    EXPECT_EQ(lined->linetypeObjectId(), db.continuousLinetype());
}

TEST_F(Reading, TextStyles) {
    const auto style = read<AcDbTextStyleTableRecord>(
        "100=AcDbSymbolTableRecord|100=AcDbTextStyleTableRecord|2=HZ|70=4|40=3.5|"
        "41=0.7|50=15|71=2|42=2.5|3=txt.shx|4=hztxt.shx");
    EXPECT_EQ(style->nameOf(), L"HZ");
    EXPECT_EQ(style->textSize(), 3.5);
    EXPECT_EQ(style->xScale(), 0.7);
    EXPECT_NEAR(style->obliquingAngle(), std::numbers::pi / 12, 1e-15);
    EXPECT_EQ(style->flagBits(), 2);
    EXPECT_TRUE(style->isVertical());
    EXPECT_FALSE(style->isShapeFile());
    const ACHAR* text = nullptr;
    style->fileName(text);
    EXPECT_STREQ(text, L"txt.shx");
    style->bigFontFileName(text);
    EXPECT_STREQ(text, L"hztxt.shx");

    style->readFont(L"SimSun", 0x2008602);
    ACHAR* face = nullptr;
    bool bold = false, italic = true;
    int charset = 0, family = 0;
    style->font(face, bold, italic, charset, family);
    EXPECT_STREQ(face, L"SimSun");
    acutDelString(face);
    EXPECT_TRUE(bold);
    EXPECT_FALSE(italic);
    EXPECT_EQ(charset, 134);
    EXPECT_EQ(family, 2);

    const auto flat = read<AcDbTextStyleTableRecord>("2=|70=1|41=0");
    EXPECT_TRUE(flat->isShapeFile());
    EXPECT_EQ(flat->xScale(), 1.0);
}

TEST_F(Reading, LinetypesAndDimensionStyles) {
    const auto dashed = read<AcDbLinetypeTableRecord>(
        "2=DASHED|70=0|3=Dashed __ __|72=65|73=2|40=0.75|49=0.5|74=0|49=-0.25|74=0");
    EXPECT_EQ(dashed->patternLength(), 0.75);
    ASSERT_EQ(dashed->numDashes(), 2);
    EXPECT_EQ(dashed->dashLengthAt(0), 0.5);
    EXPECT_EQ(dashed->dashLengthAt(1), -0.25);
    EXPECT_EQ(dashed->setDashLengthAt(2, 1.0), Acad::eInvalidIndex);

    const auto style = read<AcDbDimStyleTableRecord>(
        "2=D|70=0|3=<>mm|40=100|41=3|44=1.5|140=3.5|147=0.9|271=0|176=1|340=11");
    EXPECT_EQ(style->dimscale(), 100.0);
    EXPECT_EQ(style->dimasz(), 3.0);
    EXPECT_EQ(style->dimexe(), 1.5);
    EXPECT_EQ(style->dimtxt(), 3.5);
    EXPECT_EQ(style->dimgap(), 0.9);
    EXPECT_EQ(style->dimdec(), 0);
    EXPECT_EQ(style->dimclrd().colorIndex(), 1);
    EXPECT_EQ(style->dimtxsty(), idOf(0x11));
    EXPECT_STREQ(style->dimpost(), L"<>mm");
}

TEST_F(Reading, ViewsHaveTheirOwnPoints) {
    const auto view =
        read<AcDbViewTableRecord>("2=V|70=1|40=10|10=1,2|41=16|11=0,0,1|12=7,8,9|50=180");
    EXPECT_EQ(view->centerPoint(), AcGePoint2d(1, 2));
    EXPECT_EQ(view->target(), AcGePoint3d(7, 8, 9));
    EXPECT_EQ(view->width(), 16.0);
    EXPECT_NEAR(view->viewTwist(), std::numbers::pi, 1e-15);
    EXPECT_TRUE(view->isPaperspaceView());

    const auto port = read<AcDbViewportTableRecord>(
        "2=*Active|10=0.5,0|11=1,0.5|12=100,200|16=1,0,0|17=5,6,7|40=30|41=2|43=8|"
        "44=-9|71=19");
    EXPECT_EQ(port->lowerLeftCorner(), AcGePoint2d(0.5, 0));
    EXPECT_EQ(port->upperRightCorner(), AcGePoint2d(1, 0.5));
    EXPECT_EQ(port->centerPoint(), AcGePoint2d(100, 200));
    EXPECT_EQ(port->viewDirection(), AcGeVector3d(1, 0, 0));
    EXPECT_EQ(port->target(), AcGePoint3d(5, 6, 7));
    EXPECT_EQ(port->height(), 30.0);
    EXPECT_EQ(port->width(), 60.0);
    EXPECT_EQ(port->frontClipDistance(), 8.0);
    EXPECT_EQ(port->backClipDistance(), -9.0);
    EXPECT_TRUE(port->perspectiveEnabled());
    EXPECT_TRUE(port->frontClipEnabled());
    EXPECT_FALSE(port->backClipEnabled());
    EXPECT_FALSE(port->frontClipAtEye());

    const auto ucs = read<AcDbUCSTableRecord>("2=U|10=1,2,3|11=0,1,0|12=-1,0,0");
    EXPECT_EQ(ucs->origin(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(ucs->xAxis(), AcGeVector3d(0, 1, 0));
    EXPECT_EQ(ucs->yAxis(), AcGeVector3d(-1, 0, 0));
}

TEST_F(Reading, BlocksFromTwoRecords) {
    auto record = read<AcDbBlockTableRecord>("100=AcDbBlockTableRecord|2=*U7|340=22|70=4|280=0");
    EXPECT_TRUE(record->isAnonymous());
    EXPECT_EQ(record->blockInsertUnits(), 4);
    EXPECT_FALSE(record->explodable());
    EXPECT_EQ(record->getLayoutId(), idOf(0x22));

    // The begin comes when the block is resident already, and closed.
    const AcDbObjectId id = Residence::admitRecord(
        *Residence::peek<AcDbBlockTable>(db.blockTableId()), std::move(record));

    filer.give("8=0|100=AcDbBlockBegin|2=X|70=4|10=1,2,3|3=X|1=ref.dwg|4=a comment");
    EXPECT_EQ(Residence::peek<AcDbBlockTableRecord>(id)->readBegin(filer), Acad::eOk);
    const AcDbObjectPointer<AcDbBlockTableRecord> block(id);
    EXPECT_EQ(block->origin(), AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(block->isFromExternalReference());
    EXPECT_FALSE(block->isFromOverlayReference());
    const ACHAR* text = nullptr;
    block->pathName(text);
    EXPECT_STREQ(text, L"ref.dwg");
    block->comments(text);
    EXPECT_STREQ(text, L"a comment");

    EXPECT_FALSE(read<AcDbBlockTableRecord>({{2, "*MODEL_SPACE"}})->isAnonymous());
    EXPECT_TRUE(read<AcDbBlockTableRecord>({{2, "*Paper_Space3"}})->isLayout());
}

TEST_F(Reading, DictionariesWithDanglingEntries) {
    const AcDbObjectId present = Residence::admit(db, std::make_unique<AcDbXrecord>(), {}, 0xB1);
    auto dictionary = read<AcDbDictionary>(
        "100=AcDbDictionary|280=1|281=1|3=HERE|350=B1|3=NEVER|360=B2|350=B3|3=HALF");
    AcDbObjectPointer<AcDbDictionary> open(Residence::admit(db, std::move(dictionary)));
    EXPECT_TRUE(open->isTreatElementsAsHard());
    EXPECT_EQ(open->numEntries(), 1U);
    EXPECT_EQ(open->entries().size(), 2U);
    EXPECT_EQ(open->find(L"here"), present);
    EXPECT_TRUE(open->find(L"never").isNull());
    const AcDbObjectId late = Residence::admit(db, std::make_unique<AcDbXrecord>(), {}, 0xB2);
    EXPECT_EQ(open->find(L"never"), late) << "an object read later than its dictionary";
}

TEST_F(Reading, MlineStyleElements) {
    const auto style = read<AcDbMlineStyle>(
        "100=AcDbMlineStyle|2=WALL|70=3|3=two lines|62=256|51=90|52=45|71=2|49=0.5|"
        "62=1|6=BYLAYER|49=-0.5|62=2|6=Continuous");
    EXPECT_STREQ(style->name(), L"WALL");
    EXPECT_TRUE(style->filled());
    EXPECT_TRUE(style->showMiters());
    EXPECT_NEAR(style->endAngle(), std::numbers::pi / 4, 1e-15);
    ASSERT_EQ(style->numElements(), 2);
    double offset = 0.0;
    AcCmColor color;
    AcDbObjectId linetype;
    style->getElementAt(1, offset, color, linetype);
    EXPECT_EQ(offset, -0.5);
    EXPECT_EQ(color.colorIndex(), 2);
    EXPECT_EQ(linetype, db.continuousLinetype());
}

TEST_F(Reading, XrecordTakesOnlyItsFirstGroupForItself) {
    EXPECT_EQ(read<AcDbXrecord>("100=AcDbXrecord|280=5|280=2")->mergeStyle(),
              AcDb::kDrcUnmangleName);
    EXPECT_EQ(read<AcDbXrecord>("100=AcDbXrecord|1=x|280=2")->mergeStyle(), AcDb::kDrcIgnore);
}

TEST_F(Reading, HeaderSetsWhatItNames) {
    const AcDbObjectId wall = addRecord<AcDbLayerTableRecord>(db.layerTableId(), L"WALL");
    auto& header = db.headerVariables();
    const auto set = [&](const char* name, const Groups& groups) {
        header.set(name, filer.tagsOf(groups));
    };
    set("$ACADVER", {{1, "AC1015"}});
    set("$CLAYER", {{8, "wall"}});
    set("$CECOLOR", {{62, "3"}});
    set("$LTSCALE", {{40, "0"}});
    set("$TEXTSIZE", {{40, "5"}});
    set("$INSUNITS", {{70, "6"}});
    set("$ANGBASE", {{50, "90"}});
    set("$EXTMIN", "10=-1,-2,-3");
    set("$LIMMAX", "10=10,20,0");
    set("$TILEMODE", {{70, "0"}});
    set("$HANDSEED", {{5, "F000"}});
    set("$CMLSTYLE", {{2, "STANDARD"}});
    const AcDbObjectId mlineStyle = std::exchange(db.settingsForWrite().cmlstyle, AcDbObjectId());
    headless::applyHeader(db, filer);

    EXPECT_EQ(db.clayer(), wall);
    EXPECT_EQ(db.cecolor().colorIndex(), 3);
    EXPECT_EQ(db.ltscale(), 1.0);
    EXPECT_EQ(filer.reports.size(), 1U);
    EXPECT_EQ(db.textsize(), 5.0);
    EXPECT_EQ(db.insunits(), 6);
    EXPECT_NEAR(db.angbase(), std::numbers::pi / 2, 1e-15);
    EXPECT_EQ(db.extmin(), AcGePoint3d(-1, -2, -3));
    EXPECT_EQ(db.extmax(), AcGePoint3d(-1e20, -1e20, -1e20)) << "not named, so not set";
    EXPECT_EQ(db.limmax(), AcGePoint2d(10, 20));
    EXPECT_EQ(db.currentSpaceId(), db.paperSpaceId());
    EXPECT_EQ(db.handseed(), 0xF000U);
    EXPECT_EQ(Residence::peek<AcDbTextStyleTableRecord>(db.textstyle())->nameOf(), L"Standard");
    EXPECT_EQ(db.cmlstyleID(), mlineStyle);
    EXPECT_EQ(header.all().front().name, "$ACADVER");
    ASSERT_NE(header.find("$EXTMIN", 20), nullptr);
    EXPECT_EQ(header.find("$EXTMIN", 20)->real(), -2.0);
    set("$TEXTSIZE", {{40, "7"}});
    EXPECT_EQ(header.all().size(), 12U) << "a name that comes again replaces the first";
}

TEST(Defaults, CompleteWhatIsMissingOnce) {
    const headless::DbState state;
    AcDbDatabase db(false);
    EXPECT_TRUE(db.blockTableId().isNull());
    EXPECT_TRUE(db.layerZero().isNull());
    AcDbLayerTable* none = nullptr;
    EXPECT_EQ(db.getLayerTable(none), Acad::eNullObjectId);

    // As a damaged file may leave it: a layer table without layer 0, no other table.
    AcDbSymbolTable* const layers =
        headless::DrawingRoots::table(db, AcDbLayerTableRecord::desc(), 0x2);
    ASSERT_NE(layers, nullptr);
    EXPECT_EQ(layers->objectId().handle(), 0x2U);
    auto wall = std::make_unique<AcDbLayerTableRecord>();
    wall->setName(L"WALL");
    const AcDbObjectId wallId = Residence::admitRecord(*layers, std::move(wall), 0x10);
    db.settingsForWrite().clayer = wallId;
    EXPECT_EQ(headless::DrawingRoots::table(db, AcDbEntity::desc()), nullptr);

    headless::completeDefaults(db);
    const std::size_t objects = Residence::residents(db).size();
    headless::completeDefaults(db);
    EXPECT_EQ(Residence::residents(db).size(), objects);

    EXPECT_EQ(db.layerTableId(), layers->objectId());
    EXPECT_EQ(db.clayer(), wallId) << "what is there stays";
    const AcDbObjectId required[] = {db.blockTableId(),
                                     db.dimStyleTableId(),
                                     db.linetypeTableId(),
                                     db.textStyleTableId(),
                                     db.regAppTableId(),
                                     db.UCSTableId(),
                                     db.viewTableId(),
                                     db.viewportTableId(),
                                     db.modelSpaceId(),
                                     db.paperSpaceId(),
                                     db.layerZero(),
                                     db.byLayerLinetype(),
                                     db.byBlockLinetype(),
                                     db.continuousLinetype(),
                                     db.namedObjectsDictionaryId(),
                                     db.groupDictionaryId(),
                                     db.mLStyleDictionaryId(),
                                     db.celtype(),
                                     db.textstyle(),
                                     db.dimstyle(),
                                     db.cmlstyleID()};
    for (const AcDbObjectId id : required)
        EXPECT_TRUE(id.isResident());
    EXPECT_EQ(Residence::peek<AcDbLayerTableRecord>(db.layerZero())->linetypeOf(),
              db.continuousLinetype());
    EXPECT_EQ(Residence::openCount(db), 0U);
}

} // namespace
