#include "tables.h"

#include <memory>

#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "grid_files.h"
#include "text/string_list.h"

namespace board {
namespace {

bool liesIn(const AcDbEntity& entity, const AcDbExtents2d& window) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return false;
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    return low.x >= window.minPoint().x && low.y >= window.minPoint().y &&
           high.x <= window.maxPoint().x && high.y <= window.maxPoint().y;
}

bool passes(const AcDbEntity& entity, const TableFilter& filter) {
    if (!filter.layers.empty()) {
        CString layer;
        AcUtSymTbl::symbolIdToName(entity.layerId(), layer);
        if (kelmor::IsStrInVecString(layer, filter.layers, 0) == 0) return false;
    }
    return !filter.window || liesIn(entity, *filter.window);
}

AcArray<AcDbObjectId> entitiesThatPass(AcDbDatabase* db, const TableFilter& filter) {
    AcArray<AcDbObjectId> ids;
    AcDbBlockTableRecord* space = nullptr;
    if (AcUtSymTbl::openBlockDef(ACDB_MODEL_SPACE, space, AcDb::kForRead, db) != Acad::eOk)
        return ids;
    const Closing<AcDbBlockTableRecord> closing(space);
    AcDbBlockTableRecordIterator* all = nullptr;
    if (space->newIterator(all) != Acad::eOk) return ids;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(all);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        entities->getEntityId(id);
        if (const ReadHandle<AcDbEntity> entity(id); entity && passes(*entity, filter))
            ids.append(id);
    }
    return ids;
}

std::vector<const CDrawGrid*> gridsOf(const table::DrawnTables& tables) {
    std::vector<const CDrawGrid*> grids;
    for (const auto& table : tables)
        grids.push_back(table.get());
    return grids;
}

} // namespace

table::DrawnTables drawnTables(AcDbDatabase* db, const TableFilter& filter) {
    if (db == nullptr) return {};
    const bool isAskedFor = filter.window || !filter.layers.empty();
    return table::tablesAmong(entitiesThatPass(db, filter),
                              isAskedFor ? table::BlankForms::kTables : table::BlankForms::kNone);
}

CString writeTables(const table::DrawnTables& tables, const CString& path) {
    return writeGrids(gridsOf(tables), path);
}

} // namespace board
