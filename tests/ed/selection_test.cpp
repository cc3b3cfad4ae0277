// Selection sets, and filters over everything that a drawing holds.
#include <array>
#include <map>

#include <gmock/gmock.h>

#include "db/block_reference.h"
#include "db/circle.h"
#include "db/layer_table.h"
#include "db/line.h"
#include "db/object_groups.h"
#include "db/polyline.h"
#include "db/text.h"
#include "db/xdata.h"
#include "ed/selection.h"
#include "view_fixture.h"

namespace {

/// A chain of buffers that frees itself.
class Filter {
public:
    explicit Filter(resbuf* chain) : chain_(chain) {}
    Filter(Filter&& other) noexcept : chain_(std::exchange(other.chain_, nullptr)) {}
    ~Filter() { acutRelRb(chain_); }
    operator const resbuf*() const { return chain_; }

private:
    resbuf* chain_;
};

template <class... Values>
Filter filter(Values... values) {
    return Filter(acutBuildList(values..., RTNONE));
}

class SelectionTest : public ViewTest {
protected:
    ~SelectionTest() override {
        EXPECT_EQ(ed_.selections.openCount(), 0U);
        EXPECT_EQ(db_.liveResultBuffers, 0);
    }

    AcDbObjectId addLayer(const wchar_t* name) {
        AcDbObjectPointer<AcDbLayerTable> layers(drawing().layerTableId(), AcDb::kForWrite);
        auto* layer = new AcDbLayerTableRecord;
        layer->setName(name);
        layers->add(layer);
        layer->close();
        return layer->objectId();
    }

    template <class T>
    AcDbObjectId place(std::unique_ptr<T> entity, const wchar_t* layer = nullptr,
                       AcDbObjectId space = {}) {
        const AcDbObjectId id =
            add(space.isNull() ? drawing().modelSpaceId() : space, std::move(entity));
        if (layer == nullptr) return id;
        const AcDbObjectPointer<AcDbEntity> open(id, AcDb::kForWrite);
        EXPECT_EQ(open->setLayer(layer), Acad::eOk);
        return id;
    }

    AcDbObjectId addCircle(double radius, const wchar_t* layer = nullptr) {
        return place(
            std::make_unique<AcDbCircle>(AcGePoint3d(radius, 0, 0), AcGeVector3d::kZAxis, radius),
            layer);
    }

    /// The ids of the set, which is freed; empty when there is none.
    static std::vector<AcDbObjectId> take(const wchar_t* mode, const resbuf* filter = nullptr) {
        ads_name set;
        std::vector<AcDbObjectId> ids;
        if (acedSSGet(mode, nullptr, nullptr, filter, set) != RTNORM) return ids;
        Adesk::Int32 length = 0;
        EXPECT_EQ(acedSSLength(set, &length), RTNORM);
        for (Adesk::Int32 i = 0; i < length; ++i) {
            ads_name entity;
            EXPECT_EQ(acedSSName(set, i, entity), RTNORM);
            EXPECT_EQ(acdbGetObjectId(ids.emplace_back(), entity), Acad::eOk);
        }
        ads_name beyond;
        EXPECT_EQ(acedSSName(set, length, beyond), RTERROR);
        EXPECT_EQ(acedSSFree(set), RTNORM);
        EXPECT_EQ(acedSSFree(set), RTERROR);
        return ids;
    }
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SelectionTest, ModesTakeWhatTheyPromise) {
    const AcDbObjectId off = addLayer(L"off");
    const AcDbObjectId frozen = addLayer(L"frozen");
    const AcDbObjectId locked = addLayer(L"locked");
    const AcDbObjectId oldest = addCircle(1);
    const AcDbObjectId sheet =
        place(std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d(0, 0, 1), 9), nullptr,
              drawing().paperSpaceId());
    addCircle(2, L"off");
    addCircle(3, L"frozen");
    const AcDbObjectId newest = addCircle(5);
    const AcDbObjectId onLocked = addCircle(4, L"locked");
    const AcDbObjectId hidden = addCircle(6);
    const AcDbObjectId erased = addCircle(7);
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> first(off, AcDb::kForWrite);
        first->setIsOff(true);
        const AcDbObjectPointer<AcDbLayerTableRecord> second(frozen, AcDb::kForWrite);
        second->setIsFrozen(true);
        const AcDbObjectPointer<AcDbLayerTableRecord> third(locked, AcDb::kForWrite);
        third->setIsLocked(true);
        const AcDbObjectPointer<AcDbEntity> entity(hidden, AcDb::kForWrite);
        entity->setVisibility(AcDb::kInvisible);
        const AcDbObjectPointer<AcDbEntity> gone(erased, AcDb::kForWrite);
        gone->erase();
    }
    EXPECT_THAT(take(L"A"), ElementsAre(newest, oldest, sheet));
    EXPECT_EQ(take(L"X").size(), 7U);
    EXPECT_THAT(take(L"_l"), ElementsAre(newest));
    EXPECT_THAT(take(L"L", filter(40, 1.0)), IsEmpty()) << "the last is another";
    EXPECT_THAT(take(L"X", filter(40, 4.0)), ElementsAre(onLocked));
    EXPECT_THAT(take(L"P"), ElementsAre(onLocked));
    EXPECT_THAT(take(L"I"), IsEmpty());
    EXPECT_THAT(take(L"W"), IsEmpty());
}

TEST_F(SelectionTest, FiltersCompareGroups) {
    addLayer(L"Walls-Outer");
    addLayer(L"Doors");
    const AcDbObjectId circle = addCircle(5, L"Walls-Outer");
    const AcDbObjectId line =
        place(std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6)), L"Doors");
    auto closed = std::make_unique<AcDbPolyline>(2);
    closed->addVertexAt(0, {0, 0});
    closed->addVertexAt(1, {10, 20});
    closed->setClosed(true);
    const AcDbObjectId outline = place(std::move(closed));
    const AcDbObjectId text =
        place(std::make_unique<AcDbText>(AcGePoint3d(), L"Beam B1", AcDbObjectId(), 3.5, 0.0));
    {
        const AcDbObjectPointer<AcDbEntity> red(circle, AcDb::kForWrite);
        red->setColorIndex(1);
        acdbRegApp(L"KELMOR");
        const AcDbObjectPointer<AcDbEntity> tagged(line, AcDb::kForWrite);
        const Filter data = filter(1001, L"KELMOR", 1070, 7);
        EXPECT_EQ(tagged->setXData(data), Acad::eOk);
    }
    const ads_point corner = {10, 20, 99};
    const ads_point middle = {2, 2, 2};
    const ads_point up = {0, 0, 1};
    const struct {
        const char* name;
        Filter filter;
        std::vector<AcDbObjectId> wanted; // the newest first
    } cases[] = {
        {"type in any case", filter(RTDXF0, L"circle"), {circle}},
        {"alternatives and wildcards", filter(RTDXF0, L"LINE,*POLYLINE"), {outline, line}},
        {"layer", filter(8, L"walls-*,doors"), {line, circle}},
        {"not that layer", filter(-4, L"!=", 8, L"0"), {line, circle}},
        {"colour", filter(62, 1), {circle}},
        {"colour by layer", filter(62, 256), {text, outline, line}},
        {"linetype by layer", filter(6, L"ByLayer", 8, L"Doors"), {line}},
        {"no thickness, for kinds that have one", filter(39, 0.0), {text, outline, line, circle}},
        {"space", filter(67, 0, 410, L"model", 0 + RTDXF0, L"TEXT"), {text}},
        {"closed", filter(70, 1), {outline}},
        {"any vertex, flat", filter(10, corner), {outline}},
        {"extrusion that is left out", filter(RTDXF0, L"LINE", 210, up), {line}},
        {"text with regard to case", filter(1, L"beam*"), {}},
        {"text", filter(1, L"Beam*#"), {text}},
        {"marker", filter(100, L"AcDbPolyline"), {outline}},
        {"radius", filter(-4, L">=", 40, 5.0), {circle}},
        {"radius beyond", filter(-4, L">", 40, 5.0), {}},
        {"radius below", filter(-4, L"<", 40, 4.0), {text}},
        {"any height or radius", filter(-4, L"*", 40, 0.0), {text, circle}},
        {"bits", filter(-4, L"&", 70, 129), {outline}},
        {"all bits", filter(-4, L"&=", 70, 129), {}},
        {"coordinates apart", filter(-4, L"<,*,>", 10, middle, 8, L"Doors"), {line}},
        {"one relation for all", filter(-4, L">=", 11, middle), {line}},
        {"flat points have no z", filter(-4, L"<,<,>", 10, middle), {outline}},
        {"x alone", filter(-4, L">", 10, middle, RTDXF0, L"CIRCLE"), {}},
        {"extended data", filter(-3, 1001, L"kel*"), {line}},
        {"of no application", filter(1001, L"OTHER"), {}},
        {"or, nested",
         filter(-4, L"<or", -4, L"<AND", RTDXF0, L"CIRCLE", 62, 1, -4, L"AND>", RTDXF0, L"TEXT", -4,
                L"OR>"),
         {text, circle}},
        {"exclusive or", filter(-4, L"<XOR", 62, 1, RTDXF0, L"CIRCLE,LINE", -4, L"XOR>"), {line}},
        {"not", filter(-4, L"<NOT", RTDXF0, L"*LINE", -4, L"NOT>"), {text, circle}},
        {"a group that the kind does not have", filter(-4, L"!=", 40, 1.0, RTDXF0, L"LINE"), {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(take(L"X", c.filter), c.wanted) << c.name;
}

TEST_F(SelectionTest, MalformedFiltersAreRefused) {
    addCircle(1);
    const ads_point point = {0, 0, 0};
    const struct {
        const char* name;
        Filter filter;
    } cases[] = {
        {"unknown operator", filter(-4, L"<MAYBE", 62, 1, -4, L"MAYBE>")},
        {"never ended", filter(-4, L"<OR", 62, 256)},
        {"never begun", filter(62, 256, -4, L"OR>")},
        {"crossed", filter(-4, L"<OR", -4, L"<AND", 62, 256, -4, L"OR>", -4, L"AND>")},
        {"empty group", filter(-4, L"<OR", -4, L"OR>")},
        {"one for XOR", filter(-4, L"<XOR", 62, 256, -4, L"XOR>")},
        {"two for NOT", filter(-4, L"<NOT", 62, 1, 62, 2, -4, L"NOT>")},
        {"relation of nothing", filter(62, 256, -4, L">")},
        {"relation of a group", filter(-4, L">", -4, L"<AND", 62, 1, -4, L"AND>")},
        {"order of texts", filter(-4, L"<", 8, L"0")},
        {"bits of a real", filter(-4, L"&", 40, 1.0)},
        {"too many coordinates", filter(-4, L"*,*,*,*", 10, point)},
        {"two relations of a number", filter(-4, L">,<", 40, 1.0)},
        {"handle", filter(5, L"1F")},
        {"extended data's values", filter(-3, 1001, L"*", 1070, 7)},
        {"no group code", filter(RTSTR, L"CIRCLE")},
    };
    for (const auto& c : cases)
        EXPECT_THAT(take(L"X", c.filter), IsEmpty()) << c.name;
    EXPECT_EQ(take(L"X").size(), 1U);
    resbuf* deep = nullptr;
    for (int i = 0; i < 100000; ++i) {
        resbuf* outer = acutBuildList(-4, L"<AND", RTNONE);
        outer->rbnext = deep;
        deep = outer;
    }
    EXPECT_THAT(take(L"X", Filter(deep)), IsEmpty());
}

TEST_F(SelectionTest, SetsAreEdited) {
    const AcDbObjectId first = addCircle(1);
    const AcDbObjectId second = addCircle(2);
    ads_name one, two;
    acdbGetAdsName(one, first);
    acdbGetAdsName(two, second);
    ads_name set;
    ASSERT_EQ(acedSSAdd(nullptr, nullptr, set), RTNORM);
    Adesk::Int32 length = 9;
    EXPECT_EQ(acedSSLength(set, &length), RTNORM);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(acedSSAdd(one, set, set), RTNORM);
    EXPECT_EQ(acedSSAdd(two, set, set), RTNORM);
    EXPECT_EQ(acedSSAdd(one, set, set), RTNORM) << "each stands in it once";
    acedSSLength(set, &length);
    EXPECT_EQ(length, 2);
    EXPECT_EQ(acedSSDel(one, set), RTNORM);
    EXPECT_EQ(acedSSDel(one, set), RTERROR);
    EXPECT_EQ(acedSSMemb(one, set), RTERROR);
    EXPECT_EQ(acedSSMemb(two, set), RTNORM);
    EXPECT_EQ(acedSSAdd(set, set, set), RTERROR) << "a set is no entity";
    EXPECT_EQ(acedSSLength(one, &length), RTERROR) << "an entity is no set";
    AcDbObjectId unused;
    EXPECT_EQ(acdbGetObjectId(unused, set), Acad::eInvalidAdsName);

    EXPECT_EQ(acedSSSetFirst(nullptr, set), RTNORM);
    EXPECT_THAT(take(L"_I"), ElementsAre(second));
    EXPECT_EQ(acedSSFree(set), RTNORM);
    EXPECT_EQ(acedSSMemb(two, set), RTERROR);
    ed_.documents.closeAll();
    ed_.documents.open(std::make_unique<AcDbDatabase>(true, true), L"Other.dwg", false);
    EXPECT_THAT(take(L"P"), IsEmpty()) << "that drawing is gone";
}

TEST_F(SelectionTest, OneHundredAndTwentyEightAtATime) {
    std::vector<std::array<Adesk::IntDbId, 2>> open(128);
    for (auto& name : open) {
        ads_name set;
        ASSERT_EQ(acedSSAdd(nullptr, nullptr, set), RTNORM);
        name = {set[0], set[1]};
    }
    addCircle(1);
    EXPECT_THAT(take(L"X"), IsEmpty());
    ads_name set;
    EXPECT_EQ(acedSSAdd(nullptr, nullptr, set), RTERROR);
    for (const auto& name : open)
        EXPECT_EQ(acedSSFree(name.data()), RTNORM);
    EXPECT_EQ(take(L"X").size(), 1U);
}

TEST_F(SelectionTest, EntityAsGroups) {
    auto line = std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6));
    const AcDbObjectId id = place(std::move(line));
    {
        const AcDbObjectPointer<AcDbEntity> green(id, AcDb::kForWrite);
        green->setColorIndex(3);
    }
    ads_name name;
    acdbGetAdsName(name, id);
    const Filter groups(acdbEntGet(name));
    std::map<short, const resbuf*> byCode;
    std::vector<short> codes;
    for (const resbuf* group = groups; group != nullptr; group = group->rbnext) {
        codes.push_back(group->restype);
        byCode[group->restype] = group;
    }
    ASSERT_THAT(codes, ElementsAre(-1, 0, 330, 5, 100, 67, 410, 8, 62, 100, 10, 11));
    EXPECT_STREQ(byCode[0]->resval.rstring, L"LINE");
    EXPECT_EQ(byCode[62]->resval.rint, 3);
    EXPECT_EQ(byCode[11]->resval.rpoint[2], 6.0);
    EXPECT_STREQ(byCode[410]->resval.rstring, L"Model");
    const ads_name nobody = {1, 2};
    EXPECT_EQ(acdbEntGet(nobody), nullptr);
}

} // namespace
