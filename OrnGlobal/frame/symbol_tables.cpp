// The parts of AcUtSymTbl about symbol tables and their records.
#include <memory>

#include <dbmlsty.h>
#include <dbsymtb.h>

#include "frame/ac_ut_sym_tbl.h"
#include "frame/ac_ut_ui.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"

namespace {

template <class Table>
using Getter = Acad::ErrorStatus (AcDbDatabase::*)(Table*&, AcDb::OpenMode);

template <class Table, Getter<Table> kGetter>
Acad::ErrorStatus openTable(AcDbDatabase& db, AcDb::OpenMode mode, AcDbSymbolTable*& table) {
    Table* typed = nullptr;
    const Acad::ErrorStatus status = (db.*kGetter)(typed, mode);
    table = typed;
    return status;
}

struct TableKind {
    AcRxClass* (*recordClass)();
    Acad::ErrorStatus (*open)(AcDbDatabase& db, AcDb::OpenMode mode, AcDbSymbolTable*& table);
};

constexpr TableKind kTables[] = {
    {AcDbBlockTableRecord::desc, openTable<AcDbBlockTable, &AcDbDatabase::getBlockTable>},
    {AcDbDimStyleTableRecord::desc, openTable<AcDbDimStyleTable, &AcDbDatabase::getDimStyleTable>},
    {AcDbLayerTableRecord::desc, openTable<AcDbLayerTable, &AcDbDatabase::getLayerTable>},
    {AcDbLinetypeTableRecord::desc, openTable<AcDbLinetypeTable, &AcDbDatabase::getLinetypeTable>},
    {AcDbTextStyleTableRecord::desc,
     openTable<AcDbTextStyleTable, &AcDbDatabase::getTextStyleTable>},
    {AcDbRegAppTableRecord::desc, openTable<AcDbRegAppTable, &AcDbDatabase::getRegAppTable>},
    {AcDbUCSTableRecord::desc, openTable<AcDbUCSTable, &AcDbDatabase::getUCSTable>},
    {AcDbViewTableRecord::desc, openTable<AcDbViewTable, &AcDbDatabase::getViewTable>},
    {AcDbViewportTableRecord::desc, openTable<AcDbViewportTable, &AcDbDatabase::getViewportTable>},
};

Acad::ErrorStatus openTableOf(AcRxClass* recordClass, AcDb::OpenMode mode, AcDbDatabase* db,
                              AcDbSymbolTable*& table) {
    db = frame::orWorking(db);
    if (db == nullptr) return Acad::eNoDatabase;
    for (const TableKind& kind : kTables) {
        if (recordClass == kind.recordClass()) return kind.open(*db, mode, table);
    }
    return Acad::eInvalidInput;
}

/// An iterator from the first record on that passes over erased records but not hidden layers.
std::unique_ptr<AcDbSymbolTableIterator> iterate(const AcDbSymbolTable& table) {
    if (const auto* layers = AcDbLayerTable::cast(&table)) {
        AcDbLayerTableIterator* iterator = nullptr;
        if (layers->newIterator(iterator) != Acad::eOk) return nullptr;
        std::unique_ptr<AcDbLayerTableIterator> all(iterator);
        all->setSkipHidden(false);
        // It may already have passed over hidden layers on its way to the first record.
        all->start();
        return all;
    }
    AcDbSymbolTableIterator* iterator = nullptr;
    table.newIterator(iterator);
    return std::unique_ptr<AcDbSymbolTableIterator>(iterator);
}

/// A failure leaves the name.
Acad::ErrorStatus readName(AcDbObjectId id, CString& name) {
    const ReadHandle<AcDbSymbolTableRecord> record(id);
    if (!record) return record.status();
    const ACHAR* text = nullptr;
    record->getName(text);
    name = text;
    return Acad::eOk;
}

} // namespace

AcDbSymbolTable* AcUtSymTbl::openSymbolTable(AcRxClass* recordClass, AcDb::OpenMode mode,
                                             AcDbDatabase* db) {
    AcDbSymbolTable* table = nullptr;
    const Acad::ErrorStatus status = openTableOf(recordClass, mode, db, table);
    if (status == Acad::eOk) return table;
    AcUtUi::rxErrorMsg(status);
    return nullptr;
}

bool AcUtSymTbl::symbolExists(AcRxClass* recordClass, const wchar_t* name, AcDbDatabase* db) {
    AcDbSymbolTable* table = openSymbolTable(recordClass, AcDb::kForRead, db);
    const Closing closing(table);
    return table != nullptr && table->has(name);
}

Acad::ErrorStatus AcUtSymTbl::nameToSymbolId(AcRxClass* recordClass, const wchar_t* name,
                                             AcDbObjectId& id, AcDbDatabase* db) {
    AcDbSymbolTable* table = openSymbolTable(recordClass, AcDb::kForRead, db);
    const Closing closing(table);
    return table == nullptr ? Acad::eInvalidInput : table->getAt(name, id, false);
}

Acad::ErrorStatus AcUtSymTbl::symbolIdToName(const AcDbObjectId& id, CString& name) {
    if (id.isNull()) {
        name = L"AcDbObjectId::kNull";
        return Acad::eNullObjectId;
    }
    const Acad::ErrorStatus status = readName(id, name);
    AcUtUi::rxErrorMsg(status);
    return status == Acad::eOk ? Acad::eOk : Acad::eInvalidInput;
}

CString AcUtSymTbl::GetStyleName(const AcDbObjectId& id) {
    CString name;
    readName(id, name);
    return name;
}

Acad::ErrorStatus AcUtSymTbl::mlineStyleIdToName(const AcDbObjectId& id, CString& name) {
    const ReadHandle<AcDbMlineStyle> style(id);
    if (!style) {
        AcUtUi::rxErrorMsg(style.status());
        return Acad::eInvalidInput;
    }
    name = style->name();
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSymTbl::collectSymbolIds(AcRxClass* recordClass, AcDbObjectIdArray& ids,
                                               AcDbDatabase* db) {
    AcDbSymbolTable* table = openSymbolTable(recordClass, AcDb::kForRead, db);
    const Closing closing(table);
    if (table == nullptr) return Acad::eInvalidInput;
    const std::unique_ptr<AcDbSymbolTableIterator> records = iterate(*table);
    if (records == nullptr) return Acad::eInvalidInput;
    for (; !records->done(); records->step()) {
        AcDbObjectId id;
        if (records->getRecordId(id) == Acad::eOk) ids.append(id);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcUtSymTbl::addNewSymbolAndClose(AcDbSymbolTable* table,
                                                   AcDbSymbolTableRecord* record) {
    const Acad::ErrorStatus status = table == nullptr ? Acad::eInvalidInput : table->add(record);
    if (status == Acad::eOk) {
        record->close();
    } else {
        delete record;
    }
    return status;
}

Acad::ErrorStatus AcUtSymTbl::addNewLayer(const wchar_t* name, AcDbDatabase* db) {
    db = frame::orWorking(db);
    if (db == nullptr) return Acad::eNoDatabase;
    AcDbLayerTable* table = nullptr;
    Acad::ErrorStatus status = db->getLayerTable(table, AcDb::kForRead);
    if (status != Acad::eOk) return status;
    const Closing closing(table);
    if (table->has(name)) return Acad::eOk;

    status = table->upgradeOpen();
    if (status != Acad::eOk) return status;
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (layer->setName(name) != Acad::eOk) return Acad::eInvalidInput;
    layer->setLinetypeObjectId(db->continuousLinetype());
    return addNewSymbolAndClose(table, layer.release());
}
