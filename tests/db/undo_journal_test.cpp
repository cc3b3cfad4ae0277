// Undo and redo: every state comes back as it was.
#include <random>

#include "undo_support.h"

using namespace undotest;
using headless::UndoJournal;
using Kind = headless::UndoneOperation::Kind;

namespace {

/// Makes changes of all kinds at random to a drawing.
class RandomEditor {
public:
    RandomEditor(AcDbDatabase& db, unsigned seed) : db_(db), random_(seed) {}

    void editOnce() {
        static constexpr void (RandomEditor::*kEdits[])() = {
            &RandomEditor::addLine,     &RandomEditor::moveLine,     &RandomEditor::eraseOrRevive,
            &RandomEditor::addPolyline, &RandomEditor::editPolyline, &RandomEditor::addReference,
            &RandomEditor::editParts,   &RandomEditor::editLayers,   &RandomEditor::editDictionary,
            &RandomEditor::editData,    &RandomEditor::reorder,      &RandomEditor::editGroup,
            &RandomEditor::addBlock,    &RandomEditor::setSettings,  &RandomEditor::destroyNew};
        addLine(); // Some others find nothing to do.
        (this->*kEdits[pick(std::size(kEdits))])();
    }

    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

private:
    using Space = AcDbObjectPointer<AcDbBlockTableRecord>;

    double real() { return std::uniform_real_distribution<>(-1e3, 1e3)(random_); }
    AcGePoint3d point() { return {real(), real(), real()}; }
    std::wstring name() { return L"N" + std::to_wstring(pick(12)); }

    /// An object of that class, erased ones too; null when there is none.
    template <class T>
    AcDbObjectId any(bool erasedToo = false) {
        std::vector<AcDbObjectId> found;
        for (const AcDbObjectId id : Residence::residents(db_)) {
            if (Residence::peek<T>(id) != nullptr && (erasedToo || !id.isErased()))
                found.push_back(id);
        }
        return found.empty() ? AcDbObjectId() : found[pick(found.size())];
    }
    template <class T, class Edit>
    void with(Edit edit) {
        AcDbObjectPointer<T> object(any<T>(), AcDb::kForWrite, false, true);
        if (object.openStatus() == Acad::eOk) edit(*object.object());
    }
    void append(AcDbEntity* entity) {
        Space space(db_.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(entity), Acad::eOk);
        entity->close();
    }

    void addLine() { append(new AcDbLine(point(), point())); }
    void moveLine() {
        with<AcDbLine>([&](AcDbLine& line) {
            line.transformBy(AcGeMatrix3d::translation(AcGeVector3d(real(), 0, 0)));
            line.setColorIndex(static_cast<Adesk::UInt16>(pick(257)));
        });
    }
    void eraseOrRevive() {
        AcDbObjectPointer<AcDbEntity> entity(any<AcDbEntity>(true), AcDb::kForWrite, true, true);
        if (entity.openStatus() == Acad::eOk) entity->erase(!entity->isErased());
    }
    void addPolyline() {
        AcGePoint3dArray vertices;
        for (int i = 0; i < 3; ++i)
            vertices.append(point());
        append(new AcDb2dPolyline(AcDb::k2dSimplePoly, vertices));
    }
    void editPolyline() {
        with<AcDb2dPolyline>([&](AcDb2dPolyline& polyline) {
            auto* const vertex = new AcDb2dVertex(point(), real());
            if (polyline.appendVertex(vertex) == Acad::eOk) vertex->close();
            polyline.reverseCurve();
            polyline.transformBy(AcGeMatrix3d::scaling(2.0));
        });
    }
    void addReference() {
        auto* const reference = new AcDbBlockReference(point(), any<AcDbBlockTableRecord>());
        auto* const attribute = new AcDbAttribute;
        attribute->setTextString(name().c_str());
        reference->appendAttribute(attribute);
        append(reference);
    }
    void editParts() {
        with<AcDbBlockReference>([&](AcDbBlockReference& reference) {
            auto* const attribute = new AcDbAttribute;
            if (reference.appendAttribute(attribute) == Acad::eOk) attribute->close();
            reference.setLayer(any<AcDbLayerTableRecord>());
        });
        with<AcDb2dVertex>([&](AcDb2dVertex& vertex) { vertex.setPosition(point()); });
        with<AcDbAttribute>([&](AcDbAttribute& text) { text.setTextString(name().c_str()); });
    }
    void editLayers() {
        AcDbObjectPointer<AcDbLayerTable> table(db_.layerTableId(), AcDb::kForWrite);
        auto* const added = new AcDbLayerTableRecord;
        added->setName(name().c_str());
        if (table->add(added) == Acad::eOk)
            added->close();
        else
            delete added;
        with<AcDbLayerTableRecord>([&](AcDbLayerTableRecord& layer) {
            if (layer.objectId() == db_.layerZero()) return;
            layer.setName(name().c_str());
            layer.setIsLocked(!layer.isLocked());
        });
        with<AcDbLayerTableRecord>([](AcDbLayerTableRecord& layer) { layer.erase(); });
    }
    void editDictionary() {
        with<AcDbObject>([](AcDbObject& object) { object.createExtensionDictionary(); });
        with<AcDbDictionary>([&](AcDbDictionary& dictionary) {
            auto* const record = new AcDbXrecord;
            AcDbObjectId id;
            ASSERT_EQ(dictionary.setAt(name().c_str(), record, id), Acad::eOk);
            record->close();
            dictionary.remove(name().c_str());
            dictionary.setName(name().c_str(), name().c_str());
        });
    }
    void editData() {
        with<AcDbXrecord>([&](AcDbXrecord& record) {
            record.setFromRbChain(*datatest::chain(40, real(), 1, name().c_str()));
        });
        with<AcDbObject>([&](AcDbObject& object) {
            object.setXData(datatest::chain(1001, L"ACAD", 1000, name().c_str()).get());
            object.addPersistentReactor(any<AcDbObject>());
        });
    }
    void reorder() {
        Space space(db_.modelSpaceId(), AcDb::kForWrite);
        AcDbSortentsTable* order = nullptr;
        if (space->getSortentsTable(order, AcDb::kForWrite, true) != Acad::eOk) return;
        AcDbObjectIdArray moved;
        moved.append(any<AcDbLine>());
        order->moveToBottom(moved);
        order->close();
    }
    void editGroup() {
        AcDbObjectPointer<AcDbDictionary> groups(db_.groupDictionaryId(), AcDb::kForWrite);
        if (groups.openStatus() != Acad::eOk) return;
        auto* const made = new AcDbGroup(L"made");
        AcDbObjectId id;
        ASSERT_EQ(groups->setAt(name().c_str(), made, id), Acad::eOk);
        made->append(any<AcDbLine>());
        made->append(any<AcDbLine>());
        made->reverse();
        made->close();
    }
    void addBlock() {
        AcDbObjectPointer<AcDbBlockTable> table(db_.blockTableId(), AcDb::kForWrite);
        auto* const block = new AcDbBlockTableRecord;
        block->setName(L"*U");
        ASSERT_EQ(table->add(block), Acad::eOk);
        auto* const line = new AcDbLine(point(), point());
        block->appendAcDbEntity(line);
        line->close();
        block->setOrigin(point());
        block->close();
    }
    void setSettings() {
        db_.setClayer(any<AcDbLayerTableRecord>());
        db_.setLtscale(1.0 + static_cast<double>(pick(5)));
        db_.settingsForWrite().tilemode = !db_.tilemode();
        db_.setCurrentSpaceId(db_.paperSpaceId());
    }
    /// What careless programs do.
    void destroyNew() {
        auto* const line = new AcDbLine;
        append(line);
        destroy(line->objectId());
    }

    AcDbDatabase& db_;
    std::mt19937 random_;
};

/// The operations that can be undone, each with what the drawing was before it.
struct Operation {
    bool isMark;
    Telling before;
};

class Undo : public CoreTest {
protected:
    Undo() { db.disableUndoRecording(false); }

    UndoJournal& journal() { return *db.undoJournal(); }
    Telling told() { return Teller(db).tell(); }
    /// Undoes as much at random as the journal says it did, and half the time redoes it.
    void undoSome(RandomEditor& editor, std::vector<Operation>& operations);
    void backToMark(RandomEditor& editor, std::vector<Operation>& operations);
    void redoHalfTheTime(RandomEditor& editor, std::vector<Operation>& operations,
                         std::vector<Operation> before, const Telling& now);
};

void Undo::redoHalfTheTime(RandomEditor& editor, std::vector<Operation>& operations,
                           std::vector<Operation> before, const Telling& now) {
    if (before.size() == operations.size() || editor.pick(2) == 0) return;
    EXPECT_TRUE(journal().redo());
    expectAsTold(db, now);
    operations = std::move(before);
}

void Undo::undoSome(RandomEditor& editor, std::vector<Operation>& operations) {
    const Telling now = told();
    Telling wanted = now;
    std::vector<Operation> left = operations;
    for (const auto& undone : journal().undo(1 + static_cast<int>(editor.pick(3)))) {
        if (undone.kind == Kind::kNothing) {
            EXPECT_TRUE(left.empty());
            break;
        }
        ASSERT_FALSE(left.empty());
        EXPECT_EQ(undone.kind == Kind::kMark, left.back().isMark);
        wanted = left.back().before;
        left.pop_back();
    }
    expectAsTold(db, wanted);
    std::swap(left, operations);
    redoHalfTheTime(editor, operations, std::move(left), now);
}

void Undo::backToMark(RandomEditor& editor, std::vector<Operation>& operations) {
    const Telling now = told();
    Telling wanted = now;
    std::vector<Operation> left = operations;
    bool marked = false;
    while (!left.empty() && !marked) {
        marked = left.back().isMark;
        wanted = left.back().before;
        left.pop_back();
    }
    EXPECT_EQ(journal().undoToMark(), marked);
    expectAsTold(db, wanted);
    std::swap(left, operations);
    redoHalfTheTime(editor, operations, std::move(left), now);
}

class RandomUndo : public Undo, public testing::WithParamInterface<unsigned> {};

TEST_P(RandomUndo, ComesBackAndGoesForth) {
    constexpr int kRounds = 150;
    RandomEditor editor(db, GetParam());
    std::vector<Operation> operations;
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const std::size_t what = editor.pick(12);
        if (what == 0) {
            operations.push_back({true, told()});
            journal().mark();
        } else if (what == 1) {
            undoSome(editor, operations);
        } else if (what == 2) {
            backToMark(editor, operations);
        } else {
            operations.push_back({false, told()});
            journal().beginCommand(L"EDIT");
            for (std::size_t edits = editor.pick(3) + 1; edits > 0; --edits) {
                if (editor.pick(2) == 0) journal().beginGroup();
                editor.editOnce();
            }
            journal().endCommand();
        }
    }
}

TEST_P(RandomUndo, TransactionsNestAndAreTakenBack) {
    constexpr int kRounds = 150;
    AcDbTransactionManager& transactions = *db.transactionManager();
    db.disableUndoRecording(GetParam() % 2 == 0); // They need no recording.
    RandomEditor editor(db, GetParam());
    std::vector<Telling> begins;
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const std::size_t what = editor.pick(6);
        if (what == 0) {
            begins.push_back(told());
            ASSERT_NE(transactions.startTransaction(), nullptr);
        } else if (what == 1 && !begins.empty()) {
            ASSERT_EQ(transactions.abortTransaction(), Acad::eOk);
            expectAsTold(db, begins.back());
            begins.pop_back();
        } else if (what == 2 && !begins.empty()) {
            ASSERT_EQ(transactions.endTransaction(), Acad::eOk);
            begins.pop_back();
        } else {
            journal().beginCommand(L"EDIT");
            if (editor.pick(2) == 0) journal().mark();
            editor.editOnce();
            journal().endCommand();
        }
        EXPECT_EQ(transactions.numActiveTransactions(), static_cast<int>(begins.size()));
    }
    while (transactions.endTransaction() == Acad::eOk) {
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUndo, testing::Range(0U, 8U));

TEST_F(Undo, GroupsAndMarksMayOverlap) {
    const Telling empty = told();
    addPoint(db);
    const Telling one = told();
    journal().beginGroup();
    addPoint(db);
    journal().mark();
    addPoint(db);
    journal().endGroup();
    addPoint(db);
    EXPECT_EQ(journal().markCount(), 1);
    ASSERT_TRUE(journal().undoToMark());
    EXPECT_FALSE(journal().redo()) << "the group was cut in two";
    EXPECT_EQ(journal().undo(1).front().name, L"GROUP");
    expectAsTold(db, one);
    journal().beginGroup();
    EXPECT_FALSE(journal().undoToMark());
    expectAsTold(db, empty);
    addPoint(db);
    journal().endGroup();
    EXPECT_EQ(journal().undo(5).size(), 2U) << "the group, and nothing";
    EXPECT_TRUE(journal().redo());
    EXPECT_EQ(journal().undo(1).front().name, L"GROUP");
}

TEST_F(Undo, RecordsOnlyWhenAsked) {
    AcDbDatabase other;
    EXPECT_FALSE(other.undoRecording());
    db.disableUndoRecording(true);
    addPoint(db);
    const Telling before = told();
    db.disableUndoRecording(false);
    addPoint(db);
    addPoint(other);
    journal().undo(1);
    expectAsTold(db, before);
    EXPECT_EQ(journal().undo(1).front().kind, Kind::kNothing);
}

TEST_F(Undo, NamesFindTheOldestOfTheirRecordsAgain) {
    // Damaged files hold a name twice; the first record is the one found.
    AcDbLayerTable* table = nullptr;
    ASSERT_EQ(db.getLayerTable(table, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId twins[2];
    for (AcDbObjectId& id : twins) {
        auto layer = std::make_unique<AcDbLayerTableRecord>();
        layer->setName(L"TWIN");
        id = Residence::admitRecord(*table, std::move(layer));
    }
    table->close();
    AcDbObjectPointer<AcDbLayerTableRecord>(twins[0], AcDb::kForWrite)->setName(L"OTHER");
    EXPECT_EQ(Residence::peek<AcDbLayerTable>(db.layerTableId())->findRecord(L"twin"), twins[1]);
    journal().undo(1);
    EXPECT_EQ(Residence::peek<AcDbLayerTable>(db.layerTableId())->findRecord(L"twin"), twins[0]);
}

} // namespace
