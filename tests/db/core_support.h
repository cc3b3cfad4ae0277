// What the tests of the database's core share: objects to put in, and a reader of records that are
// written down in the test.
#pragma once

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/dxf_filer.h"
#include "db/point.h"
#include "db/residence.h"
#include "db/state.h"

namespace headless {

inline void PrintTo(const DxfTag& tag, std::ostream* out) {
    *out << tag.code << ": " << tag.text();
}

} // namespace headless

namespace Acad {

inline void PrintTo(ErrorStatus status, std::ostream* out) {
    const std::wstring name = acadErrorStatusText(status);
    *out << std::string(name.begin(), name.end());
}

} // namespace Acad

inline void PrintTo(AcDbObjectId id, std::ostream* out) { *out << "handle " << id.handle(); }

namespace coretest {

using headless::Residence;

/// The groups of a record as codes and texts.
using Groups = std::vector<std::pair<int, std::string>>;

/// Reads records given as groups; texts are ASCII, names are looked up in the database's tables.
class GroupFiler : public AcDbDxfFiler {
public:
    explicit GroupFiler(AcDbDatabase& db) : AcDbDxfFiler(&db) {}

    void give(const Groups& groups) {
        tags_ = tagsOf(groups);
        setRecord(tags_);
    }
    /// Tags whose texts live as long as the filer.
    std::vector<headless::DxfTag> tagsOf(const Groups& groups) {
        std::vector<headless::DxfTag> tags;
        for (const auto& [code, text] : groups) {
            const std::string& kept = texts_.emplace_back(text);
            headless::DxfTag& tag = tags.emplace_back();
            tag.code = static_cast<std::int16_t>(code);
            tag.bytes = kept.data();
            tag.length = static_cast<std::uint32_t>(kept.size());
        }
        return tags;
    }

    std::wstring text(const headless::DxfTag& tag) const override {
        const std::string_view bytes = tag.text();
        return {bytes.begin(), bytes.end()};
    }
    AcDbObjectId objectId(const headless::DxfTag& handle) override {
        return AcDbObjectId(Residence::announce(*database(), handle.handle()));
    }
    AcDbObjectId symbolId(AcRxClass* recordClass, const headless::DxfTag& name) override {
        return headless::DrawingRoots::table(*database(), recordClass)->findRecord(text(name));
    }
    void report(const headless::DxfTag& tag, std::string_view problem) override {
        reports.push_back(std::to_string(tag.code) + ": " + std::string(problem));
    }

    std::vector<std::string> reports;

private:
    std::vector<headless::DxfTag> tags_;
    std::deque<std::string> texts_;
};

/// A new point in model space, closed.
inline AcDbObjectId addPoint(AcDbDatabase& db) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
    auto* const point = new AcDbPoint;
    EXPECT_EQ(space->appendAcDbEntity(point), Acad::eOk);
    const AcDbObjectId id = point->objectId();
    point->close();
    return id;
}

inline void erase(AcDbObjectId id) {
    AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    ASSERT_EQ(object.openStatus(), Acad::eOk);
    ASSERT_EQ(object->erase(), Acad::eOk);
}

/// Deletes a resident object as careless programs do.
inline void destroy(AcDbObjectId id) { delete Residence::peek(id); }

/// A new record of that name, closed.
template <class Record>
AcDbObjectId addRecord(AcDbObjectId tableId, const ACHAR* name) {
    AcDbObjectPointer<AcDbSymbolTable> table(tableId, AcDb::kForWrite);
    auto* const record = new Record;
    EXPECT_EQ(record->setName(name), Acad::eOk);
    EXPECT_EQ(table->add(record), Acad::eOk);
    const AcDbObjectId id = record->objectId();
    record->close();
    return id;
}

/// A database with its own state; every test checks that it leaves nothing open.
class CoreTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(Residence::openCount(db), 0U);
        EXPECT_EQ(state.liveResultBuffers, 0);
    }

    headless::DbState state;
    AcDbDatabase db;
};

} // namespace coretest
