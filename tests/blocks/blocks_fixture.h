// The base of the block tests: lines to make blocks of, and what blocks then hold.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <dbents.h>
#include <dbsymtb.h>
#include <sorttab.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "support/session_fixture.h"

class BlocksTest : public test_support::SessionTest {
protected:
    AcDbObjectId addLine(const AcGePoint3d& start, const AcGePoint3d& end,
                         const ACHAR* layer = L"0", const ACHAR* block = ACDB_MODEL_SPACE) {
        auto line = std::make_unique<AcDbLine>(start, end);
        line->setLayer(addLayer(layer));
        return add(std::move(line), block);
    }

    AcDbObjectId addBlock(const ACHAR* name) {
        AcDbObjectId id;
        AcUtSymTbl::defineNewBlock(name, id, database());
        return id;
    }

    /// A line from the origin to x, by which tests know it again.
    AcDbObjectId addMark(double x, const ACHAR* layer = L"0") {
        return addLine(AcGePoint3d::kOrigin, AcGePoint3d(x, 0, 0), layer);
    }

    static AcDbObjectIdArray list(std::initializer_list<AcDbObjectId> ids) {
        AcDbObjectIdArray array;
        for (const AcDbObjectId& id : ids)
            array.append(id);
        return array;
    }

    static double endOf(AcDbObjectId id) {
        const ReadHandle<AcDbLine> line(id);
        return line ? line->endPoint().x : -1.0;
    }

    /// The block's entities that are not erased, in their order.
    static std::vector<AcDbObjectId> entitiesOf(AcDbObjectId id) {
        std::vector<AcDbObjectId> entities;
        const ReadHandle<AcDbBlockTableRecord> block(id);
        AcDbBlockTableRecordIterator* made = nullptr;
        if (!block || block->newIterator(made) != Acad::eOk) return entities;
        const std::unique_ptr<AcDbBlockTableRecordIterator> all(made);
        for (; !all->done(); all->step()) {
            AcDbObjectId entity;
            all->getEntityId(entity);
            entities.push_back(entity);
        }
        return entities;
    }

    /// The ends of a block's lines.
    static std::vector<double> endsOf(AcDbObjectId block) {
        std::vector<double> ends;
        for (const AcDbObjectId& id : entitiesOf(block))
            ends.push_back(endOf(id));
        return ends;
    }
};
