// What the tests of undo share: a drawing told in words, object by object.
#pragma once

#include <map>
#include <sstream>
#include <string>

#include "data_support.h"
#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/group.h"
#include "db/line.h"
#include "db/polyline_2d.h"
#include "db/sortents_table.h"
#include "db/undo_journal.h"
#include "db/xrecord.h"

namespace undotest {

using namespace coretest;

/// What every object that was ever there is, by handle, and the settings under 0.
using Telling = std::map<Adesk::UInt64, std::wstring>;

class Teller {
public:
    explicit Teller(AcDbDatabase& db) : db_(db) {}

    Telling tell() {
        Telling all;
        for (const AcDbObjectId id : Residence::residents(db_)) {
            out_.str({});
            AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead, true);
            EXPECT_EQ(object.openStatus(), Acad::eOk);
            common(*object);
            special(object.object());
            all[id.handle()] = out_.str();
        }
        out_.str({});
        settings();
        all[0] = out_.str();
        return all;
    }

private:
    void id(AcDbObjectId id) { out_ << std::hex << id.handle() << std::dec << L' '; }
    void point(const AcGePoint3d& p) {
        out_ << std::hexfloat << p.x << L',' << p.y << L',' << p.z << std::defaultfloat << L' ';
    }
    void chain(resbuf* values) {
        out_ << L'[' << datatest::shown(values) << L"] ";
        acutRelRb(values);
    }
    void ids(const AcDbObjectIdArray& list) {
        for (const AcDbObjectId one : list)
            id(one);
    }
    template <class Iterator>
    void parts(Iterator* made) {
        const std::unique_ptr<Iterator> each(made);
        for (each->start(true, false); !each->done(); each->step(false, false))
            id(each->objectId());
    }

    void common(const AcDbObject& object) {
        out_ << object.isA()->name() << L' ' << object.isErased() << Residence::isChanged(object)
             << L' ';
        id(object.ownerId());
        id(object.extensionDictionary());
        chain(object.xData());
        for (const AcDbObjectId reactor : headless::ObjectData::reactors(object))
            id(reactor);
        if (const auto* const entity = AcDbEntity::cast(&object)) {
            id(entity->layerId());
            out_ << entity->colorIndex() << L' ';
        }
    }

    void special(AcDbObject* object) {
        if (auto* const line = AcDbLine::cast(object)) {
            point(line->startPoint());
            point(line->endPoint());
        } else if (auto* const polyline = AcDb2dPolyline::cast(object)) {
            parts(polyline->vertexIterator());
        } else if (auto* const vertex = AcDb2dVertex::cast(object)) {
            point(vertex->position());
            out_ << vertex->bulge();
        } else if (auto* const reference = AcDbBlockReference::cast(object)) {
            point(reference->position());
            parts(reference->attributeIterator());
        } else if (auto* const attribute = AcDbAttribute::cast(object)) {
            out_ << attribute->textStringConst();
        } else if (auto* const dictionary = AcDbDictionary::cast(object)) {
            for (const auto& entry : dictionary->entries()) {
                out_ << entry.key << L'=';
                id(entry.id);
                out_ << (dictionary->find(entry.key) == entry.id) << L' ';
            }
        } else {
            record(object);
        }
    }

    void record(AcDbObject* object) {
        if (auto* const table = AcDbSymbolTable::cast(object)) {
            for (const AcDbObjectId each : table->recordIds()) {
                const std::wstring& name = Residence::peek<AcDbSymbolTableRecord>(each)->nameOf();
                AcDbObjectId found;
                // What was added later and undone is still in the table.
                if (table->getAt(name.c_str(), found) != Acad::eOk || found != each) continue;
                out_ << name << L'=';
                id(found);
            }
        } else if (auto* const named = AcDbSymbolTableRecord::cast(object)) {
            out_ << named->nameOf() << L' ';
            if (auto* const layer = AcDbLayerTableRecord::cast(object))
                out_ << layer->color().colorIndex() << layer->isLocked();
            if (auto* const block = AcDbBlockTableRecord::cast(object)) entities(*block);
        } else if (auto* const group = AcDbGroup::cast(object)) {
            for (const AcDbObjectId member : group->memberIds())
                id(member);
        } else if (auto* const order = AcDbSortentsTable::cast(object)) {
            AcDbObjectIdArray sorted;
            order->getFullDrawOrder(sorted);
            ids(sorted);
        } else if (auto* const values = AcDbXrecord::cast(object)) {
            resbuf* list = nullptr;
            values->rbChain(&list);
            chain(list);
        }
    }

    void entities(const AcDbBlockTableRecord& block) {
        point(block.origin());
        for (const AcDbObjectId each : block.entityIds()) {
            if (!each.isErased()) id(each);
        }
    }

    void settings() {
        id(db_.clayer());
        id(db_.currentSpaceId());
        out_ << std::hexfloat << db_.ltscale() << L' ' << db_.tilemode();
    }

    AcDbDatabase& db_;
    std::wostringstream out_;
};

/// That the drawing is as it was told: what came since must be erased.
inline void expectAsTold(AcDbDatabase& db, const Telling& wanted) {
    const Telling actual = Teller(db).tell();
    for (const auto& [handle, words] : actual) {
        const auto known = wanted.find(handle);
        if (known == wanted.end())
            EXPECT_EQ(words[words.find(L' ') + 1], L'1') << "new and not erased: " << handle;
        else
            EXPECT_EQ(words, known->second) << handle;
    }
    EXPECT_GE(actual.size(), wanted.size());
}

} // namespace undotest
