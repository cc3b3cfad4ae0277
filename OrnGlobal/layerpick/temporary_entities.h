// Entities that exist for the length of a scope. Inside the library and its neighbours only.
#pragma once

#include <dbidar.h>

#include "OrnCore/zel_dwg.h"

namespace layerpick {

/// Erases in the end what was put into `ids`.
class TemporaryEntities {
public:
    TemporaryEntities() = default;
    ~TemporaryEntities() {
        CZelDwg::ClearEntity(ids);
        // Once more what was refused: what is left now is in the user's drawing for good.
        if (!ids.isEmpty()) CZelDwg::ClearEntity(ids);
    }
    TemporaryEntities(const TemporaryEntities&) = delete;
    TemporaryEntities& operator=(const TemporaryEntities&) = delete;

    AcDbObjectIdArray ids;
};

} // namespace layerpick
