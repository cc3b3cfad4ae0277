#include "dxf/table_order.h"

#include "db/database.h"

namespace headless {

const std::array<AcRxClass*, 9>& tablesInOrder() {
    static const std::array classes = {
        AcDbViewportTableRecord::desc(), AcDbLinetypeTableRecord::desc(),
        AcDbLayerTableRecord::desc(),    AcDbTextStyleTableRecord::desc(),
        AcDbViewTableRecord::desc(),     AcDbUCSTableRecord::desc(),
        AcDbRegAppTableRecord::desc(),   AcDbDimStyleTableRecord::desc(),
        AcDbBlockTableRecord::desc()};
    return classes;
}

void writeTableHead(GroupWriter& to, const AcDbSymbolTable& table, std::size_t records) {
    const bool marked = to.form().hasSubclasses();
    to.name(0, "TABLE");
    to.name(2, table.recordClass()->dxfNameBytes());
    if (marked) {
        to.handle(5, table.objectId().handle());
        to.handle(330, 0);
        to.name(100, "AcDbSymbolTable");
    }
    to.integer(70, static_cast<std::int64_t>(records));
    if (marked && table.recordClass() == AcDbDimStyleTableRecord::desc())
        to.name(100, "AcDbDimStyleTable");
}

} // namespace headless
