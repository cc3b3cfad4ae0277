// Lets objects read themselves from the records of a file.
#pragma once

#include <string_view>

#include "db/dxf_filer.h"
#include "dxf/name_cache.h"
#include "dxf/read_report.h"
#include "dxf/record_parts.h"
#include "dxf/text_decoder.h"

class AcDbSymbolTable;

namespace headless {

/// Someone who knows the blocks that the file defines further on.
class BlockFinder {
public:
    virtual ~BlockFinder() = default;
    /// Makes records for all blocks of the file that have none yet.
    virtual void announceBlocks() = 0;
};

class RecordFiler : public AcDbDxfFiler {
public:
    RecordFiler(AcDbDatabase& db, DxfReadReport& report, BlockFinder& blocks)
        : AcDbDxfFiler(&db), report_(report), blocks_(blocks) {}

    void setDecoder(const TextDecoder& decoder) { decoder_ = decoder; }
    const TextDecoder& decoder() const { return decoder_; }

    /// The record that objects read from now on. Its parts must stay until the next one.
    void begin(const RecordParts& parts);

    std::wstring text(const DxfTag& tag) const override;
    AcDbObjectId objectId(const DxfTag& handle) override;
    AcDbObjectId symbolId(AcRxClass* recordClass, const DxfTag& name) override;
    void report(const DxfTag& tag, std::string_view problem) override;

    /// Adds a record of that name with default properties to the table.
    AcDbObjectId makeRecord(AcDbSymbolTable& table, const DxfTag& name, std::uint64_t handle);

private:
    AcDbObjectId lookUp(AcRxClass* recordClass, const DxfTag& name);
    AcDbObjectId makeMissing(AcDbSymbolTable& table, const DxfTag& tag);

    DxfReadReport& report_;
    BlockFinder& blocks_;
    TextDecoder decoder_;
    NameCache names_;
    std::uint64_t handle_ = 0;
    bool blocksAnnounced_ = false;
};

} // namespace headless
