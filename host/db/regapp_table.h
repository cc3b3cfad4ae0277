// Names of the applications whose extended data a drawing holds.
#pragma once

#include "db/symbol_table.h"

class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);

    AcDbRegAppTableRecord() = default;

    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};

class AcDbRegAppTableIterator : public headless::SymbolTableIteratorOf<AcDbRegAppTableRecord> {
public:
    using SymbolTableIteratorOf::SymbolTableIteratorOf;
};

class AcDbRegAppTable
    : public headless::SymbolTableOf<AcDbRegAppTableRecord, AcDbRegAppTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTable);
};
