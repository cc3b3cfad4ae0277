// Reads entities, with the vertices and attributes that follow some of them.
#pragma once

#include <string_view>

#include "dxf/context.h"

class AcDbBlockTableRecord;
class AcRxClass;

namespace headless {

class EntityReader {
public:
    explicit EntityReader(ReadContext& context) : context_(context) {}

    /// Reads one entity as the last of the block, or a part of the entity before it.
    void read(const RecordParts& parts, AcDbBlockTableRecord& block);
    /// Called where no further parts can follow.
    void endSequence();

private:
    std::unique_ptr<AcDbEntity> make(const RecordParts& parts);
    AcRxClass* classOf(const RecordParts& parts);
    void readEntity(const RecordParts& parts, AcDbBlockTableRecord& block);
    void readPart(const RecordParts& parts);
    std::unique_ptr<AcDbEntity> makePart(const RecordParts& parts);

    ReadContext& context_;
    // The entity whose parts may follow, and whether its record promised them.
    AcDbObjectId owner_;
    std::uint32_t ownerPlace_ = 0;
    bool partsPromised_ = false;
    // Entities of a kind stand together; the class of kinds that one class has alone.
    std::string_view lastName_;
    AcRxClass* lastClass_ = nullptr;
};

} // namespace headless
