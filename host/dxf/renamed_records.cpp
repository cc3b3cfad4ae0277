#include "dxf/renamed_records.h"

#include <optional>

#include "db/block_table.h"
#include "db/layer_table.h"
#include "db/residence.h"
#include "win/casing.h"

namespace headless {
namespace {

/// The name that the record in the file states; none for a record that states none.
std::optional<std::wstring> nameInFile(SourceSpan span, const DxfSource& source,
                                       RecordGroups& groups) {
    constexpr int kName = 2;
    if (!groups.read(span)) return std::nullopt;
    const DxfTag* const name = DxfRecord(groups.record().tags).find(kName);
    if (name == nullptr) return std::nullopt;
    return source.decoder.decode(name->text());
}

} // namespace

RenamedRecords findRenamed(const DrawingChanges& changes, const DxfSource& source,
                           RecordGroups& groups) {
    RenamedRecords renamed;
    for (const AcDbObject* const object : changes.changedBesideEntities()) {
        const auto* const record = AcDbSymbolTableRecord::cast(object);
        if (record == nullptr) continue;
        const auto before = nameInFile(Residence::source(*record), source, groups);
        if (!before || *before == record->nameOf()) continue;
        renamed.records.insert(record->objectId());
        if (AcDbLayerTableRecord::cast(record) != nullptr)
            renamed.layers.emplace(upperCased(*before), record->nameOf());
    }
    // Where only the block's begin is in the file, its record was completed after reading.
    for (const AcDbObject* const object : changes.added()) {
        const auto* const block = AcDbBlockTableRecord::cast(object);
        if (block == nullptr || block->isSpace() || !changes.beginsInFile(*block)) continue;
        const auto before = nameInFile(block->beginSource(), source, groups);
        if (before && *before != block->nameOf()) renamed.records.insert(block->objectId());
    }
    return renamed;
}

} // namespace headless
