// The base of tests that draw a few things and select some of them.
#pragma once

#include "db/circle.h"
#include "db/layer_table.h"
#include "db/line.h"
#include "ed/selection.h"
#include "view_fixture.h"

class DrawnTest : public ViewTest {
protected:
    using Ids = std::vector<AcDbObjectId>;

    AcDbObjectId put(AcDbEntity* entity, AcDbObjectId in = {}) {
        if (in.isNull()) in = drawing().modelSpaceId();
        AcDbObjectPointer<AcDbBlockTableRecord> block(in, AcDb::kForWrite);
        EXPECT_EQ(block->appendAcDbEntity(entity), Acad::eOk);
        entity->close();
        return entity->objectId();
    }
    AcDbObjectId line(const AcGePoint3d& a, const AcGePoint3d& b, AcDbObjectId in = {}) {
        return put(new AcDbLine(a, b), in);
    }
    AcDbObjectId circle(const AcGePoint3d& center, double radius, AcDbObjectId in = {}) {
        return put(new AcDbCircle(center, AcGeVector3d::kZAxis, radius), in);
    }
    AcDbObjectId block(const wchar_t* name) {
        AcDbObjectPointer<AcDbBlockTable> table(drawing().blockTableId(), AcDb::kForWrite);
        auto* const record = new AcDbBlockTableRecord;
        record->setName(name);
        EXPECT_EQ(table->add(record), Acad::eOk);
        record->close();
        return record->objectId();
    }
    AcDbObjectId layer(const wchar_t* name, bool off, bool frozen = false) {
        AcDbObjectPointer<AcDbLayerTable> table(drawing().layerTableId(), AcDb::kForWrite);
        auto* const record = new AcDbLayerTableRecord;
        record->setName(name);
        record->setIsOff(off);
        record->setIsFrozen(frozen);
        EXPECT_EQ(table->add(record), Acad::eOk);
        record->close();
        return record->objectId();
    }
    static void setLayer(AcDbObjectId id, AcDbObjectId layer) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        ASSERT_EQ(entity->setLayer(layer), Acad::eOk);
    }
    static void erase(AcDbObjectId id) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        ASSERT_EQ(entity->erase(), Acad::eOk);
    }
    static Ids take(int result, ads_name set) {
        Ids ids;
        if (result != RTNORM) return ids;
        Adesk::Int32 length = 0;
        EXPECT_EQ(acedSSLength(set, &length), RTNORM);
        for (Adesk::Int32 i = 0; i < length; ++i) {
            ads_name name;
            AcDbObjectId id;
            EXPECT_EQ(acedSSName(set, i, name), RTNORM);
            EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk);
            ids.push_back(id);
        }
        acedSSFree(set);
        return ids;
    }
};
