// The parts that an entity explodes into.
#pragma once

#include <memory>
#include <vector>

#include <dbmain.h>

namespace layerpick {

/// New entities in no drawing; none when the entity cannot be exploded.
[[nodiscard]] inline std::vector<std::unique_ptr<AcDbEntity>> partsOf(const AcDbEntity& entity) {
    AcDbVoidPtrArray exploded;
    const Acad::ErrorStatus status = entity.explode(exploded);
    std::vector<std::unique_ptr<AcDbEntity>> parts;
    for (int i = 0; i < exploded.length(); ++i) {
        auto* const part = static_cast<AcDbObject*>(exploded[i]);
        if (AcDbEntity* const drawn = AcDbEntity::cast(part))
            parts.emplace_back(drawn);
        else
            delete part;
    }
    if (status != Acad::eOk) parts.clear();
    return parts;
}

} // namespace layerpick
