// The base of tests that work on a drawing.
//
// Each test has a session of its own with a fresh drawing in it, and fails when it leaves anything
// behind: an object open, a result buffer, a database, a document lock.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <dbmain.h>
#include <dbpl.h>
#include <dbsymtb.h>

#include "headless/session.h"

namespace test_support {

/// A vertex of a polyline; the bulge shapes the segment that leaves it.
struct BulgeVertex {
    AcGePoint2d point;
    double bulge = 0.0;
};

class SessionTest : public testing::Test {
protected:
    SessionTest() { session_.newDrawing(); }

    void TearDown() override {
        for (const std::string& leftover : session_.leftovers()) {
            ADD_FAILURE() << "left behind: " << leftover;
        }
    }

    headless::Session& session() { return session_; }
    AcDbDatabase* database() const { return session_.database(); }

    /// Adds the entity to a block of the current drawing, by default its model space, and closes
    /// it.
    AcDbObjectId add(std::unique_ptr<AcDbEntity> entity, const ACHAR* block = ACDB_MODEL_SPACE) {
        AcDbBlockTable* table = nullptr;
        EXPECT_EQ(database()->getBlockTable(table, AcDb::kForRead), Acad::eOk);
        if (table == nullptr) return AcDbObjectId::kNull;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(table->getAt(block, space, AcDb::kForWrite), Acad::eOk);
        table->close();
        if (space == nullptr) return AcDbObjectId::kNull;

        AcDbObjectId id;
        const Acad::ErrorStatus added = space->appendAcDbEntity(id, entity.get());
        EXPECT_EQ(added, Acad::eOk);
        space->close();
        if (added == Acad::eOk) entity.release()->close();
        return id;
    }

    /// Adds a lightweight polyline, closed unless told otherwise, on the given or the current
    /// layer.
    AcDbObjectId addPolyline(const std::vector<BulgeVertex>& vertices, bool closed = true,
                             const ACHAR* layer = nullptr) {
        auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned>(vertices.size()));
        polyline->setDatabaseDefaults(database());
        for (unsigned int i = 0; i < vertices.size(); ++i) {
            polyline->addVertexAt(i, vertices[i].point, vertices[i].bulge);
        }
        polyline->setClosed(closed);
        if (layer != nullptr) {
            EXPECT_EQ(polyline->setLayer(addLayer(layer)), Acad::eOk);
        }
        return add(std::move(polyline));
    }

    /// The layer of that name in the current drawing, made when it is missing.
    AcDbObjectId addLayer(const ACHAR* name) {
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(database()->getLayerTable(table, AcDb::kForWrite), Acad::eOk);
        if (table == nullptr) return AcDbObjectId::kNull;
        AcDbObjectId id;
        if (table->getAt(name, id) != Acad::eOk) {
            auto layer = std::make_unique<AcDbLayerTableRecord>();
            layer->setName(name);
            EXPECT_EQ(table->add(id, layer.get()), Acad::eOk);
            layer.release()->close();
        }
        table->close();
        return id;
    }

private:
    headless::Session session_;
};

} // namespace test_support
