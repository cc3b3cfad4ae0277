// What the tests of the database's core share: objects to put in, and a reader of records that are
// written down in the test.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "db/database.h"
#include "db/dxf_filer.h"
#include "db/point.h"
#include "db/residence.h"
#include "db/state.h"
#include "support/group_filer.h"

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

using test_support::GroupFiler;
using test_support::Groups;

/// Appends a new entity and closes it.
template <class T>
T* put(AcDbObjectId blockId, T* entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
    EXPECT_EQ(block->appendAcDbEntity(entity), Acad::eOk);
    entity->close();
    return entity;
}

/// A new point in model space, closed.
inline AcDbObjectId addPoint(AcDbDatabase& db) {
    return put(db.modelSpaceId(), new AcDbPoint)->objectId();
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
