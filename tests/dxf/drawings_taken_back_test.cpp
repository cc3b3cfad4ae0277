// Whatever is done to a real drawing can be undone, and its entities taken apart are the same.
#include <map>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/curve.h"
#include "db/dictionary.h"
#include "db/geometry_sink.h"
#include "db/polyface_mesh.h"
#include "db/polygon_mesh.h"
#include "db/undo_journal.h"
#include "drawing_fixture.h"
#include "reference_drawings.h"
#include "support/written_groups.h"

namespace headless::testing {
namespace {

using test_support::groupsOf;
using test_support::WrittenGroups;

/// What an object is: how it stands in the drawing, and what it writes.
struct State {
    bool erased;
    bool changed;
    AcDbObjectId owner;
    AcDbObjectId extension;
    WrittenGroups groups;

    friend bool operator==(const State&, const State&) = default;
};
using States = std::map<std::uint64_t, State>;

States statesOf(AcDbDatabase& db) {
    States states;
    DxfOutFiler writer(&db, DrawingVersion::k2018);
    for (const AcDbObjectId id : Residence::residents(db)) {
        const AcDbObject& object = *Residence::peek(id);
        states[id.handle()] = {object.isErased(), Residence::isChanged(object), object.ownerId(),
                               object.extensionDictionary(), groupsOf(writer.write(object))};
    }
    return states;
}

void expectSame(const States& actual, const States& wanted) {
    for (const auto& [handle, state] : actual) {
        const auto known = wanted.find(handle);
        if (known == wanted.end())
            EXPECT_TRUE(state.erased) << handleText(handle);
        else
            EXPECT_EQ(state, known->second) << handleText(handle);
    }
}

/// Moves, turns, recolours and erases, renames and takes out whatever lets that happen.
void ruin(AcDbDatabase& db) {
    int number = 0;
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(0.3, AcGeVector3d::kZAxis, {5, 6, 7});
    for (const AcDbObjectId id : Residence::residents(db)) {
        AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true, true);
        if (object.openStatus() != Acad::eOk) continue;
        ++number;
        if (auto* const entity = AcDbEntity::cast(object.object())) {
            entity->transformBy(turn);
            entity->setColorIndex(static_cast<Adesk::UInt16>(number % 256));
            if (auto* const curve = AcDbCurve::cast(entity)) curve->reverseCurve();
        } else if (auto* const record = AcDbSymbolTableRecord::cast(object.object())) {
            record->setName((L"N" + std::to_wstring(number)).c_str());
        } else if (auto* const dictionary = AcDbDictionary::cast(object.object())) {
            const auto entries = dictionary->entries();
            for (const auto& entry : entries)
                dictionary->remove(entry.key.c_str());
        }
        object->createExtensionDictionary();
        if (number % 3 == 0) object->erase(!object->isErased());
    }
}

class DrawingsUndo : public ReferenceDrawings {};
ORN_INSTANTIATE_FOR_DRAWINGS(DrawingsUndo);

TEST_P(DrawingsUndo, BringsBackAllObjects) {
    const Drawing drawing(GetParam());
    ASSERT_TRUE(drawing.result);
    AcDbDatabase& db = *drawing.db;
    db.disableUndoRecording(false);
    const States before = statesOf(db);
    ruin(db);
    const States ruined = statesOf(db);
    db.undoJournal()->undoToMark();
    expectSame(statesOf(db), before);
    ASSERT_TRUE(db.undoJournal()->redo());
    expectSame(statesOf(db), ruined);
    db.undoJournal()->undo(1);
    expectSame(statesOf(db), before);
}

/// Entities and the sum of what they are taken apart into.
class PartsOf {
public:
    explicit PartsOf(const AcDbEntity& whole) : whole_(whole) {
        refusal_ = whole.takeApart(parts_);
    }

    void compare() const {
        const bool isMesh =
            whole_.isKindOf(AcDbPolyFaceMesh::desc()) || whole_.isKindOf(AcDbPolygonMesh::desc());
        const auto* const reference = AcDbBlockReference::cast(&whole_);
        if (refusal_ != Acad::eOk || (isMesh && parts_.empty())) return;
        if (reference != nullptr && hasTexts()) return; // Theirs are the attributes, then the tags.
        const AcDbExtents box = lineBox(whole_);
        if (isEmpty(box)) return;
        AcDbExtents all;
        for (const auto& part : parts_)
            all.addExt(lineBox(*part));
        const double size =
            box.minPoint().distanceTo(box.maxPoint()) + box.minPoint().asVector().length();
        // A mesh may have vertices that no face uses.
        if (isMesh) all.addExt(box);
        EXPECT_LE(all.minPoint().distanceTo(box.minPoint()), 1e-9 * (1.0 + size));
        EXPECT_LE(all.maxPoint().distanceTo(box.maxPoint()), 1e-9 * (1.0 + size));
    }

private:
    static AcDbExtents lineBox(const AcDbEntity& entity) {
        AcDbExtents box;
        const bool bounded = contentExtents(entity, BoxOf::lines, box) == Acad::eOk;
        return bounded ? box : AcDbExtents();
    }
    bool hasTexts() const {
        return std::any_of(parts_.begin(), parts_.end(), [](const auto& part) {
            return AcDbAttributeDefinition::cast(part.get()) != nullptr;
        });
    }

    const AcDbEntity& whole_;
    NewEntities parts_;
    Acad::ErrorStatus refusal_;
};

class DrawingsExplode : public ReferenceDrawings {};
ORN_INSTANTIATE_FOR_DRAWINGS(DrawingsExplode);

TEST_P(DrawingsExplode, PartsFillTheSameBox) {
    const Drawing drawing(GetParam());
    ASSERT_TRUE(drawing.result);
    for (const AcDbObjectId id : Residence::residents(*drawing.db)) {
        const auto* const entity = Residence::peek<AcDbEntity>(id);
        // A multiline's own geometry is its axis.
        if (entity == nullptr || toUtf8(entity->isA()->name()) == "AcDbMline") continue;
        SCOPED_TRACE(handleText(id.handle()) + toUtf8(entity->isA()->name()));
        PartsOf(*entity).compare();
    }
}

} // namespace
} // namespace headless::testing
