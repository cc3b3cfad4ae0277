#include "view/block_facts.h"

#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/geometry_sink.h"
#include "db/residence.h"

namespace headless {

double BlockFacts::partsOf(AcDbObjectId block) {
    // What is being counted counts as nothing where it recurs.
    const auto [known, fresh] = parts_.emplace(block, 0.0);
    const auto* const record = Residence::peek<AcDbBlockTableRecord>(block);
    if (!fresh || record == nullptr || depth_ >= kDeepestReference) return known->second;
    ++depth_;
    double parts = 0.0;
    for (const AcDbObjectId id : record->entityIds()) {
        parts += 1.0;
        const auto* const reference = Residence::peek<AcDbBlockReference>(id);
        if (reference == nullptr || reference->isErased()) continue;
        const GeometrySink::Reference contents = reference->placedContents();
        parts += contents.cells() * partsOf(contents.block);
    }
    --depth_;
    return parts_[block] = parts;
}

const AcDbExtents& BlockFacts::boxOf(AcDbObjectId block) {
    const auto [known, fresh] = boxes_.try_emplace(block);
    if (fresh && blockExtents(block, known->second) != Acad::eOk) known->second = {};
    return known->second;
}

} // namespace headless
