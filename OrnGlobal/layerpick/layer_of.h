// The layers that entities have, and that they show inside references.
#pragma once

#include <afxwin.h>
#include <dbmain.h>

namespace layerpick {

/// @param entity  open for reading; so below.
[[nodiscard]] inline CString layerOf(const AcDbEntity& entity) {
    ACHAR* name = entity.layer();
    const CString layer(name);
    acutDelString(name);
    return layer;
}

/// The layer that an entity shows inside a reference: on layer 0 that of the reference, when there
/// is one.
[[nodiscard]] inline CString effectiveLayer(const AcDbEntity& entity, const CString& parentLayer) {
    const CString own = layerOf(entity);
    const bool takesParents = own.IsEmpty() || own == L"0";
    return takesParents && !parentLayer.IsEmpty() ? parentLayer : own;
}

} // namespace layerpick
