// Sets of highlighted entities, and the drawing afterwards.
#include <memory>

#include <gmock/gmock.h>

#include <dbents.h>
#include <dbsymtb.h>

#include "frame/object_handle.h"
#include "interact/ent_highlight.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;

class Highlight : public test_support::SessionTest {
protected:
    AcDbObjectId line(const wchar_t* layer) {
        auto made = std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(9, 0, 0));
        made->setLayer(addLayer(layer));
        return add(std::move(made));
    }
    void lock(const wchar_t* name, bool locked = true) {
        const WriteHandle<AcDbLayerTableRecord> layer(addLayer(name));
        layer->setIsLocked(locked);
        layer->setIsOff(true);
    }
    bool isLocked(const wchar_t* name) {
        const ReadHandle<AcDbLayerTableRecord> layer(addLayer(name));
        EXPECT_TRUE(layer->isOff()) << "as it was";
        return layer->isLocked();
    }
    bool isShown(AcDbObjectId id) { return database()->highlights().contains(id); }

    static AcDbObjectIdArray list(std::initializer_list<AcDbObjectId> ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId& id : ids)
            array.append(id);
        return array;
    }
};

TEST_F(Highlight, EachEntityOnceUntilItIsTakenOut) {
    const AcDbObjectId a = line(L"0");
    const AcDbObjectId b = line(L"0");
    {
        CEntHighlight shown;
        EXPECT_EQ(shown.IsNull(), 1);
        shown.AddEnt(list({b, AcDbObjectId::kNull, a, b}));
        EXPECT_TRUE(isShown(a) && isShown(b));
        const AcDbObjectIdArray all = shown.GetAllEnt();
        ASSERT_EQ(all.length(), 2);
        EXPECT_EQ(all[0], std::min(a, b)) << "in the order of ids";
        shown.DelEnt(list({b, AcDbObjectId::kNull}));
        EXPECT_FALSE(isShown(b));
        EXPECT_EQ(shown.isHaveId(b), 0);
        EXPECT_EQ(shown.isHaveId(a), 1);
        shown.ClearEnts();
        EXPECT_EQ(shown.IsNull(), 1);
        EXPECT_FALSE(isShown(a));
        shown.AddEnt(a);
    }
    EXPECT_FALSE(isShown(a)) << "the end unhighlights";
}

TEST_F(Highlight, LocksAgainInTheEndWhatItUnlocked) {
    const AcDbObjectId locked = line(L"LOCKED");
    const AcDbObjectId free = line(L"FREE");
    lock(L"LOCKED");
    lock(L"FREE", false);
    {
        CEntHighlight shown;
        shown.AddEnt(list({locked, free}));
        EXPECT_TRUE(isShown(locked));
        EXPECT_FALSE(isLocked(L"LOCKED"));
        shown.ClearEnts();
        EXPECT_FALSE(isLocked(L"LOCKED")) << "not before the end";
    }
    EXPECT_TRUE(isLocked(L"LOCKED"));
    EXPECT_FALSE(isLocked(L"FREE"));
}

TEST_F(Highlight, WhatCannotBeOpenedIsInTheSetAllTheSame) {
    const AcDbObjectId id = line(L"0");
    CEntHighlight shown;
    {
        const ReadHandle<AcDbLine> inUse(id);
        shown.AddEnt(id);
        EXPECT_FALSE(isShown(id));
        EXPECT_EQ(shown.isHaveId(id), 1);
    }
    shown.AddEnt(id);
    EXPECT_FALSE(isShown(id)) << "it was there already";
    shown.DelEnt(id);
    shown.AddEnt(id);
    EXPECT_TRUE(isShown(id));
    {
        const ReadHandle<AcDbLine> inUse(id);
        shown.DelEnt(id);
    }
    EXPECT_EQ(shown.isHaveId(id), 0);
    EXPECT_TRUE(isShown(id)) << "as drawn";
    const ReadHandle<AcDbLine> opened(id);
    EXPECT_EQ(opened->unhighlight(), Acad::eOk);
}

TEST_F(Highlight, OfPartsAndOfWhatIsInNoDrawingIsRefused) {
    const AcDbLine loose;
    EXPECT_EQ(loose.highlight(), Acad::eNotInDatabase);
    const ReadHandle<AcDbLine> opened(line(L"0"));
    const AcDbSubentId edge(AcDb::kEdgeSubentType, 1);
    EXPECT_EQ(opened->highlight(AcDbFullSubentPath(opened->objectId(), edge)),
              Acad::eNotApplicable);
    EXPECT_EQ(opened->highlight(AcDbFullSubentPath(opened->objectId(), {})), Acad::eOk);
    EXPECT_TRUE(isShown(opened->objectId()));
    EXPECT_EQ(opened->unhighlight(), Acad::eOk);
}

} // namespace
