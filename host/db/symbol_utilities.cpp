#include "db/symbol_utilities.h"

#include "db/database.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "rx/ac_string.h"

using Services = AcDbSymbolUtilities::Services;
using headless::Residence;

namespace {

bool named(const ACHAR* name, const ACHAR* expected) {
    return name != nullptr && headless::equalNoCase(name, expected);
}

Acad::ErrorStatus findIn(AcDbObjectId tableId, const ACHAR* name, AcDbObjectId& id) {
    const auto* const table = Residence::peek<AcDbSymbolTable>(tableId);
    if (table == nullptr) return Acad::eNullObjectId;
    if (name == nullptr) return Acad::eInvalidInput;
    id = table->findRecord(name);
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

} // namespace

const Services* acdbSymUtil() {
    static const Services services;
    return &services;
}

bool Services::isBlockModelSpaceName(const ACHAR* name) const {
    return named(name, blockModelSpaceName());
}

bool Services::isBlockPaperSpaceName(const ACHAR* name) const {
    if (name == nullptr) return false;
    const std::wstring_view paper = blockPaperSpaceName();
    return headless::equalNoCase(std::wstring_view(name).substr(0, paper.size()), paper);
}

bool Services::isLayerZeroName(const ACHAR* name) const { return named(name, layerZeroName()); }

bool Services::isLayerDefpointsName(const ACHAR* name) const {
    return named(name, layerDefpointsName());
}

bool Services::isLinetypeByBlockName(const ACHAR* name) const {
    return named(name, linetypeByBlockName());
}

bool Services::isLinetypeByLayerName(const ACHAR* name) const {
    return named(name, linetypeByLayerName());
}

bool Services::isLinetypeContinuousName(const ACHAR* name) const {
    return named(name, linetypeContinuousName());
}

AcDbObjectId Services::blockModelSpaceId(AcDbDatabase* db) const {
    return db == nullptr ? AcDbObjectId() : db->modelSpaceId();
}

AcDbObjectId Services::blockPaperSpaceId(AcDbDatabase* db) const {
    return db == nullptr ? AcDbObjectId() : db->paperSpaceId();
}

AcDbObjectId Services::layerZeroId(AcDbDatabase* db) const {
    return db == nullptr ? AcDbObjectId() : db->layerZero();
}

AcDbObjectId Services::linetypeByBlockId(AcDbDatabase* db) const {
    return db == nullptr ? AcDbObjectId() : db->byBlockLinetype();
}

AcDbObjectId Services::linetypeByLayerId(AcDbDatabase* db) const {
    return db == nullptr ? AcDbObjectId() : db->byLayerLinetype();
}

AcDbObjectId Services::linetypeContinuousId(AcDbDatabase* db) const {
    return db == nullptr ? AcDbObjectId() : db->continuousLinetype();
}

Acad::ErrorStatus Services::getBlockId(AcDbObjectId& id, const ACHAR* name,
                                       AcDbDatabase* db) const {
    return db == nullptr ? Acad::eNoDatabase : findIn(db->blockTableId(), name, id);
}

Acad::ErrorStatus Services::getLayerId(AcDbObjectId& id, const ACHAR* name,
                                       AcDbDatabase* db) const {
    return db == nullptr ? Acad::eNoDatabase : findIn(db->layerTableId(), name, id);
}

Acad::ErrorStatus Services::getLinetypeId(AcDbObjectId& id, const ACHAR* name,
                                          AcDbDatabase* db) const {
    return db == nullptr ? Acad::eNoDatabase : findIn(db->linetypeTableId(), name, id);
}

Acad::ErrorStatus Services::getTextStyleId(AcDbObjectId& id, const ACHAR* name,
                                           AcDbDatabase* db) const {
    return db == nullptr ? Acad::eNoDatabase : findIn(db->textStyleTableId(), name, id);
}

Acad::ErrorStatus Services::getDimStyleId(AcDbObjectId& id, const ACHAR* name,
                                          AcDbDatabase* db) const {
    return db == nullptr ? Acad::eNoDatabase : findIn(db->dimStyleTableId(), name, id);
}

Acad::ErrorStatus Services::validateSymbolName(const ACHAR* name, bool allowVerticalBar) const {
    if (name == nullptr) return Acad::eInvalidInput;
    std::wstring checked = name;
    if (allowVerticalBar) std::erase(checked, L'|');
    return headless::isSymbolName(checked) ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus Services::getSymbolName(ACHAR*& name, AcDbObjectId record) const {
    AcString text;
    const Acad::ErrorStatus status = getSymbolName(text, record);
    if (status == Acad::eOk) name = acutNewString(text);
    return status;
}

Acad::ErrorStatus Services::getSymbolName(AcString& name, AcDbObjectId id) const {
    if (id.isNull()) return Acad::eNullObjectId;
    const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
    if (record == nullptr) return Acad::eNotThatKindOfClass;
    name = record->nameOf().c_str();
    return Acad::eOk;
}
