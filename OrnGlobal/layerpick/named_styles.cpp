#include "layerpick/named_styles.h"

#include <memory>

#include <axlock.h>
#include <dbsymtb.h>

#include "OrnCore/dimension_style_name.h"
#include "OrnCore/quill_config.h"
#include "OrnCore/zel_dwg.h"
#include "OrnCore/zel_str.h"
#include "frame/ac_ut_sym_tbl.h"
#include "frame/object_handle.h"
#include "frame/working_database.h"
#include "layerpick/numbered_styles.h"

namespace {

constexpr const wchar_t* kProductsMark = L"VANT_";

/// The id of one of a database's tables, null without a database.
AcDbObjectId tableOf(const AcDbDatabase* db, AcDbObjectId (AcDbDatabase::*table)() const) {
    return db == nullptr ? AcDbObjectId::kNull : (db->*table)();
}

template <class Table>
AcDbObjectId recordIn(AcDbObjectId tableId, const CString& name) {
    const ReadHandle<Table> table(tableId);
    AcDbObjectId id;
    if (!table || !table->has(name) || table->getAt(name, id) != Acad::eOk)
        return AcDbObjectId::kNull;
    return id;
}

/// The names of a table's records in its order, without empty ones.
std::vector<CString> namesIn(AcDbObjectId tableId) {
    std::vector<CString> names;
    const ReadHandle<AcDbSymbolTable> table(tableId);
    AcDbSymbolTableIterator* made = nullptr;
    if (!table || table->newIterator(made) != Acad::eOk) return names;
    const std::unique_ptr<AcDbSymbolTableIterator> records(made);
    for (; !records->done(); records->step()) {
        AcDbObjectId id;
        records->getRecordId(id);
        const CString name = AcUtSymTbl::GetStyleName(id);
        if (!name.IsEmpty()) names.push_back(name);
    }
    return names;
}

/// The style of the product's that a name means; null for a name that means none.
AcDbObjectId productsDimension(const CString& name) {
    const std::vector<CString> pieces = CZelStr::StrToAry(name, L"_");
    const bool numbered = pieces.size() == 3;
    const int first = numbered ? _wtoi(pieces[1]) : -1;
    const int second = numbered ? _wtoi(pieces[2]) : -1;
    return g_pQuillCfgSet->GetDimStyleId(first, second, 0, nullptr);
}

int colorOfLayer(AcDbObjectId id) {
    constexpr int kByLayer = 256;
    const ReadHandle<AcDbLayerTableRecord> layer(id);
    return layer ? layer->color().colorIndex() : kByLayer;
}

} // namespace

AcDbObjectId kelmor::GetLayerId(const CString& name, AcDbDatabase* db) {
    return recordIn<AcDbLayerTable>(tableOf(frame::orWorking(db), &AcDbDatabase::layerTableId),
                                    name);
}

AcDbObjectId kelmor::GetTextStyleId(const CString& name, AcDbDatabase* db) {
    const AcDbObjectId id = recordIn<AcDbTextStyleTable>(
        tableOf(frame::orWorking(db), &AcDbDatabase::textStyleTableId), name);
    const ReadHandle<AcDbTextStyleTableRecord> style(id);
    return style && !style->isShapeFile() ? id : AcDbObjectId::kNull;
}

std::vector<CString> kelmor::GetAllTextStyleName() {
    return namesIn(tableOf(frame::orWorking(nullptr), &AcDbDatabase::textStyleTableId));
}

std::vector<CString> Common::GetDwgDimStyleName() {
    return namesIn(tableOf(frame::orWorking(nullptr), &AcDbDatabase::dimStyleTableId));
}

CString Common::GetDimensionName(int first, int second) {
    return orncore::dimensionStyleName(first, second);
}

AcDbObjectId Common::GetDimensionId(const CString& name) {
    if (name.Find(kProductsMark) >= 0) return productsDimension(name);
    return recordIn<AcDbDimStyleTable>(
        tableOf(frame::orWorking(nullptr), &AcDbDatabase::dimStyleTableId), name);
}

AcDbObjectId Common::GetBlockId(CString name) {
    const AcAxDocLock lock;
    AcDbObjectId id;
    // For writing, although nothing is written: callers count on it to fail while others read.
    const WriteHandle<AcDbBlockTable> table(
        tableOf(frame::orWorking(nullptr), &AcDbDatabase::blockTableId));
    if (!table || table->getAt(name, id) != Acad::eOk) return AcDbObjectId::kNull;
    return id;
}

AcDbObjectId Common::ExamineAndCreatLayer(const CString& name, unsigned int code) {
    const AcDbObjectId id = kelmor::GetLayerId(name, nullptr);
    if (!id.isNull()) return id;
    return CZelDwg::AddLayer(name, colorOfLayer(kelmor::GetLayerId(code)), L"Continuous", 0);
}
