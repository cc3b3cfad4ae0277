// Locked layers keep their entities from being changed.
#pragma once

#include "db/object.h"

namespace headless {

/// True for an entity whose layer is locked, open or not.
[[nodiscard]] bool isOnLockedLayer(const AcDbObject& object);

} // namespace headless
