// The index of a block's entities against looking at every one, while they are changed.
#include <random>

#include "db/block_memory.h"
#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/line.h"
#include "db/object_state.h"
#include "db/polyline_2d.h"
#include "db/ray.h"
#include "db/undo_journal.h"
#include "entity_support.h"

namespace {

using headless::Extents3d;
using headless::Residence;

class EntityIndexTest : public coretest::CoreTest {
protected:
    AcDbObjectId put(AcDbObjectId blockId, AcDbEntity* entity) {
        return coretest::put(blockId, entity)->objectId();
    }
    AcDbObjectId block(const ACHAR* name) {
        return coretest::addRecord<AcDbBlockTableRecord>(db.blockTableId(), name);
    }
    AcDbObjectId refer(AcDbObjectId in, AcDbObjectId to, const AcGePoint3d& at) {
        return put(in, new AcDbBlockReference(at, to));
    }
    static void move(AcDbObjectId id, const AcGeVector3d& by) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        ASSERT_EQ(entity->transformBy(AcGeMatrix3d::translation(by)), Acad::eOk);
    }
    std::vector<AcDbObjectId> find(const AcGePoint3d& low, const AcGePoint3d& high,
                                   AcDbObjectId in = {}) {
        if (in.isNull()) in = db.modelSpaceId();
        const auto& space = *Residence::peek<AcDbBlockTableRecord>(in);
        Extents3d box;
        box.add(low);
        box.add(high);
        return space.memory().index(space).find(box);
    }
    /// What holds the box by looking at all, the newest first.
    std::vector<AcDbObjectId> lookAtAll(const AcGePoint3d& low, const AcGePoint3d& high) {
        std::vector<AcDbObjectId> found;
        const auto& space = *Residence::peek<AcDbBlockTableRecord>(db.modelSpaceId());
        for (const AcDbObjectId id : space.entityIds()) {
            AcDbExtents box;
            const auto* const entity = Residence::peek<AcDbEntity>(id);
            if (entity == nullptr || entity->isErased() || entity->extentsOf(box) != Acad::eOk)
                continue;
            if (box.minPoint().x <= high.x && box.maxPoint().x >= low.x &&
                box.minPoint().y <= high.y && box.maxPoint().y >= low.y)
                found.insert(found.begin(), id);
        }
        return found;
    }
};

TEST_F(EntityIndexTest, FollowsEveryEdit) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(0.0, 100.0);
    const auto point = [&] { return AcGePoint3d(place(random), place(random), 0.0); };
    const auto newLine = [&] {
        const AcGePoint3d start = point();
        return put(db.modelSpaceId(), new AcDbLine(start, start + (point() - point()) * 0.03));
    };
    std::vector<AcDbObjectId> lines;
    for (int i = 0; i < 300; ++i)
        lines.push_back(newLine());
    for (int round = 0; round < 200; ++round) {
        const AcDbObjectId some = lines[random() % lines.size()];
        switch (random() % 5) {
        case 0:
            lines.push_back(newLine());
            break;
        case 1:
            if (!some.isErased()) move(some, (point() - point()) * 0.2);
            break;
        case 2:
            if (!some.isErased()) coretest::erase(some);
            break;
        case 3: {
            AcDbObjectPointer<AcDbEntity> entity(some, AcDb::kForWrite, true);
            if (entity.openStatus() == Acad::eOk && entity->isErased()) entity->erase(false);
            break;
        }
        default:
            if (round % 40 == 0 && some.isResident()) coretest::destroy(some);
            std::erase_if(lines, [](AcDbObjectId id) { return !id.isResident(); });
            break;
        }
        const AcGePoint3d low = point();
        const AcGePoint3d high = low + AcGeVector3d(20.0, 10.0, 0.0);
        ASSERT_EQ(find(low, high), lookAtAll(low, high)) << round;
    }
}

TEST_F(EntityIndexTest, FollowsWhatReferencesHoldAtAnyDepth) {
    const AcDbObjectId inner = block(L"inner");
    const AcDbObjectId outer = block(L"outer");
    const AcDbObjectId part = put(inner, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    refer(outer, inner, {10, 0, 0});
    const AcDbObjectId top = refer(db.modelSpaceId(), outer, {100, 0, 0});
    const auto isAt = [&](double x) { return !find({x, 0, 0}, {x + 1, 1, 0}).empty(); };
    EXPECT_TRUE(isAt(110));
    EXPECT_FALSE(isAt(140));

    move(part, {30, 0, 0});
    EXPECT_TRUE(isAt(140)) << "a part of a part moved";
    EXPECT_FALSE(isAt(110));
    put(inner, new AcDbLine({-50, 0, 0}, {-49, 1, 0}));
    EXPECT_TRUE(isAt(60)) << "a part of a part was added";
    coretest::erase(part);
    EXPECT_FALSE(isAt(140)) << "a part of a part was erased";
    {
        AcDbObjectPointer<AcDbBlockTableRecord> record(outer, AcDb::kForWrite);
        record->setOrigin({5, 0, 0});
    }
    EXPECT_TRUE(isAt(55)) << "the block's base point moved";
    EXPECT_FALSE(isAt(61));
    EXPECT_EQ(find({55, 0, 0}, {56, 1, 0}), std::vector<AcDbObjectId>{top});
}

TEST_F(EntityIndexTest, FollowsVerticesAndStatesThatComeBack) {
    AcGePoint3dArray points;
    points.append({0, 0, 0});
    points.append({1, 1, 0});
    auto* const old = new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, false);
    const AcDbObjectId id = put(db.modelSpaceId(), old);
    ASSERT_EQ(find({0, 0, 0}, {1, 1, 0}).size(), 1U);

    AcDbObjectId last;
    {
        AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForRead);
        const std::unique_ptr<AcDbObjectIterator> vertices(polyline->vertexIterator());
        for (; !vertices->done(); vertices->step())
            last = vertices->objectId();
    }
    {
        AcDbObjectPointer<AcDb2dVertex> vertex(last, AcDb::kForWrite);
        vertex->setPosition({50, 50, 0});
    }
    EXPECT_EQ(find({40, 40, 0}, {45, 45, 0}).size(), 1U) << "a vertex moved";

    const AcDbObjectId line = put(db.modelSpaceId(), new AcDbLine({200, 0, 0}, {201, 1, 0}));
    const auto before = headless::ObjectState::copyOf(*Residence::peek(line));
    move(line, {100, 0, 0});
    ASSERT_EQ(find({300, 0, 0}, {301, 1, 0}).size(), 1U);
    headless::ObjectState::restore(*Residence::peek(line), *before);
    EXPECT_EQ(find({200, 0, 0}, {201, 1, 0}).size(), 1U) << "an old state came back";
    EXPECT_TRUE(find({300, 0, 0}, {301, 1, 0}).empty());
}

TEST_F(EntityIndexTest, FollowsUndoAndRedo) {
    db.disableUndoRecording(false);
    find({0, 0, 0}, {1, 1, 0}); // Builds it.
    put(db.modelSpaceId(), new AcDbLine({0, 0, 0}, {1, 1, 0}));
    EXPECT_EQ(find({0, 0, 0}, {1, 1, 0}).size(), 1U);
    db.undoJournal()->undo(1);
    EXPECT_TRUE(find({0, 0, 0}, {1, 1, 0}).empty());
    db.undoJournal()->redo();
    EXPECT_EQ(find({0, 0, 0}, {1, 1, 0}).size(), 1U);
}

TEST_F(EntityIndexTest, RaysAreEverywhere) {
    auto* const made = new AcDbRay;
    made->setUnitDir({1, 0, 0});
    const AcDbObjectId id = put(db.modelSpaceId(), made);
    EXPECT_EQ(find({1e6, 0, 0}, {1e6 + 1, 1, 0}), std::vector<AcDbObjectId>{id});
    coretest::erase(id);
    EXPECT_TRUE(find({1e6, 0, 0}, {1e6 + 1, 1, 0}).empty());
}

} // namespace
