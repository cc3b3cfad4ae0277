// Records of symbol tables by name, made where they are missing. Inside the module only.
#pragma once

#include <afxwin.h>
#include <dbmain.h>
#include <dbobjptr.h>
#include <dbsymtb.h>

namespace orncore {

/// Hidden layers count: a drawing cannot have another layer of their name.
inline Acad::ErrorStatus find(const AcDbLayerTable& table, const CString& name, AcDbObjectId& id) {
    return table.getIncludingHidden(name, id);
}
inline Acad::ErrorStatus find(const AcDbSymbolTable& table, const CString& name, AcDbObjectId& id) {
    return table.getAt(name, id);
}

/// The record of a name; null when there is none or the table cannot be opened.
template <class Table>
AcDbObjectId existing(AcDbObjectId tableId, const CString& name) {
    const AcDbObjectPointer<Table> table(tableId);
    AcDbObjectId id;
    const bool found =
        table.openStatus() == Acad::eOk && find(*table.object(), name, id) == Acad::eOk;
    return found ? id : AcDbObjectId::kNull;
}

/// The record of a name, taken as it is; else a new one.
///
/// @param complete  called with a new record, which has its name and is in no table yet.
/// @return          null when the table cannot be opened or written, or refuses the name.
template <class Table, class Record, class Complete>
AcDbObjectId findOrAdd(AcDbObjectId tableId, const CString& name, Complete complete) {
    AcDbObjectId id = existing<Table>(tableId, name);
    if (!id.isNull()) return id;
    const AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk) return AcDbObjectId::kNull;

    AcDbObjectPointer<Record> record;
    record.create();
    if (record->setName(name) != Acad::eOk) return AcDbObjectId::kNull;
    complete(*record.object());
    return table->add(id, record.object()) == Acad::eOk ? id : AcDbObjectId::kNull;
}

/// A linetype by name; the continuous one for a name that the drawing does not have.
inline AcDbObjectId linetypeOrContinuous(const AcDbDatabase& db, const CString& name) {
    const AcDbObjectId id = existing<AcDbLinetypeTable>(db.linetypeTableId(), name);
    return id.isNull() ? db.continuousLinetype() : id;
}

} // namespace orncore
