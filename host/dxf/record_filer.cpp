#include "dxf/record_filer.h"

#include "db/block_table.h"
#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/residence.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless {
namespace {

std::string kindOf(const AcRxClass* recordClass) {
    if (recordClass == AcDbLayerTableRecord::desc()) return "layer";
    if (recordClass == AcDbLinetypeTableRecord::desc()) return "linetype";
    if (recordClass == AcDbTextStyleTableRecord::desc()) return "text style";
    if (recordClass == AcDbDimStyleTableRecord::desc()) return "dimension style";
    if (recordClass == AcDbBlockTableRecord::desc()) return "block";
    if (recordClass == AcDbRegAppTableRecord::desc()) return "application";
    return "record";
}

/// Linetypes that old drawings use without defining them.
bool isImplied(const AcRxClass* recordClass, std::string_view name) {
    if (recordClass != AcDbLinetypeTableRecord::desc()) return false;
    const std::string copy(name);
    return _stricmp(copy.c_str(), "BYLAYER") == 0 || _stricmp(copy.c_str(), "BYBLOCK") == 0;
}

std::string shown(const std::wstring& name) { return '"' + toUtf8(name) + '"'; }

} // namespace

void RecordFiler::begin(const RecordParts& parts) {
    setRecord(parts.own);
    handle_ = parts.handle;
}

std::wstring RecordFiler::text(const DxfTag& tag) const {
    if (tag.kind != DxfTag::Kind::kText) return {};
    return decoder_.decode({tag.bytes, tag.length});
}

AcDbObjectId RecordFiler::objectId(const DxfTag& handle) {
    return Residence::announce(*database(), handle.handle());
}

AcDbObjectId RecordFiler::symbolId(AcRxClass* recordClass, const DxfTag& name) {
    const std::string_view bytes = name.text();
    if (bytes.empty()) return {};
    const AcDbObjectId known = names_.find(recordClass, bytes);
    if (!known.isNull()) return known;
    const AcDbObjectId id = lookUp(recordClass, name);
    if (!id.isNull()) names_.keep(recordClass, bytes, id);
    return id;
}

AcDbObjectId RecordFiler::lookUp(AcRxClass* recordClass, const DxfTag& tag) {
    AcDbSymbolTable* const table = DrawingRoots::table(*database(), recordClass);
    if (table == nullptr) return {};
    const std::wstring name = decoder_.decode(tag.text());
    const AcDbObjectId id = table->findRecord(name);
    if (!id.isNull()) return id;
    if (recordClass != AcDbBlockTableRecord::desc()) return makeMissing(*table, tag);

    if (!blocksAnnounced_) {
        blocksAnnounced_ = true;
        blocks_.announceBlocks();
    }
    const AcDbObjectId block = table->findRecord(name);
    if (block.isNull()) report(tag, "block " + shown(name) + " is not defined");
    return block;
}

AcDbObjectId RecordFiler::makeMissing(AcDbSymbolTable& table, const DxfTag& tag) {
    const AcDbObjectId id = makeRecord(table, tag, 0);
    if (id.isNull() || isImplied(table.recordClass(), tag.text())) return id;
    report(tag, kindOf(table.recordClass()) + " " + shown(decoder_.decode(tag.text())) +
                    " is not defined; made with default properties");
    return id;
}

AcDbObjectId RecordFiler::makeRecord(AcDbSymbolTable& table, const DxfTag& name,
                                     std::uint64_t handle) {
    std::unique_ptr<AcDbSymbolTableRecord> record(
        AcDbSymbolTableRecord::cast(table.recordClass()->create()));
    if (record == nullptr) return {};
    // It reads itself from a record of nothing but its name: files hold names that setName refuses.
    DxfTag nameTag = name;
    nameTag.code = 2;
    const DxfRecord reading = DxfRecord(this->record());
    setRecord({&nameTag, 1});
    const Acad::ErrorStatus status = record->dxfInFields(this);
    setRecord(reading.all());
    if (status != Acad::eOk) return {};
    return Residence::admitRecord(table, std::move(record), handle);
}

void RecordFiler::report(const DxfTag& tag, std::string_view problem) {
    report_.add(tag.position, handle_, problem);
}

} // namespace headless
