// Locking and unlocking one layer. Inside the library only.
#pragma once

#include <dbsymtb.h>

#include "frame/object_handle.h"

namespace frame {

/// Sets whether a layer is locked, and its being on or off to what it is, which makes the host show
/// the layer anew.
inline void setLocked(AcDbLayerTableRecord& layer, bool locked) {
    layer.setIsLocked(locked);
    layer.setIsOff(layer.isOff());
}

/// False when the layer cannot be opened or is not locked.
inline bool unlockLayer(AcDbObjectId id) {
    const WriteHandle<AcDbLayerTableRecord> layer(id);
    if (!layer || !layer->isLocked()) return false;
    setLocked(*layer, false);
    return true;
}

/// Nothing for a layer that cannot be opened.
inline void lockLayer(AcDbObjectId id) {
    const WriteHandle<AcDbLayerTableRecord> layer(id);
    if (layer) setLocked(*layer, true);
}

} // namespace frame
