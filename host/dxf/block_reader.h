// Reads block definitions and puts entities into the blocks they belong to.
#pragma once

#include <unordered_set>

#include "dxf/context.h"
#include "dxf/entity_reader.h"

class AcDbBlockTableRecord;

namespace headless {

class BlockReader {
public:
    explicit BlockReader(ReadContext& context) : context_(context), entities_(context) {}

    /// A record of the section of blocks.
    void readInBlocks(const RecordParts& parts);
    /// An entity of the section of entities: of model space or of the current paper space.
    void readInSpace(const RecordParts& parts);
    /// Called at a section's end.
    void endSection();

    /// Makes the records of all blocks of the section there that have none yet: a block may refer
    /// to one that is defined further on. The scanner stays where it is.
    void announceBlocks(ScanPosition section);

private:
    void beginBlock(const RecordParts& parts);
    void endBlock(const ScannedRecord& end);
    AcDbBlockTableRecord* blockOf(const RecordParts& parts);
    AcDbBlockTableRecord* blockNamed(const DxfTag& name, std::uint64_t handle);
    AcDbBlockTableRecord& spaceOf(const RecordParts& parts);

    ReadContext& context_;
    EntityReader entities_;
    AcDbBlockTableRecord* block_ = nullptr; // whose entities are read
    ScannedRecord blockBegin_;
    std::unordered_set<const AcDbBlockTableRecord*> defined_;
    AcDbBlockTableRecord* modelSpace_ = nullptr;
    AcDbBlockTableRecord* paperSpace_ = nullptr;
    // The last owner that an entity named, and the space that it is.
    std::uint64_t lastOwner_ = 0;
    AcDbBlockTableRecord* lastSpace_ = nullptr;
};

} // namespace headless
