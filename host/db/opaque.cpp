#include "db/opaque.h"

#include <mutex>
#include <set>
#include <string>

namespace headless {

ACRX_CONS_DEFINE_MEMBERS(OpaqueObject, AcDbObject, 0)
ACRX_CONS_DEFINE_MEMBERS(OpaqueEntity, AcDbEntity, 0)

std::string_view interned(std::string_view text) {
    static std::mutex mutex;
    // Never destroyed: objects held by other statics may outlive it.
    static auto* const texts = new std::set<std::string, std::less<>>;
    const std::scoped_lock lock(mutex);
    const auto known = texts->find(text);
    return known != texts->end() ? *known : *texts->emplace(text).first;
}

std::string_view dxfName(const AcDbObject& object) {
    if (const auto* const opaque = OpaqueEntity::cast(&object)) return opaque->dxfName();
    if (const auto* const opaque = OpaqueObject::cast(&object)) return opaque->dxfName();
    for (const AcRxClass* kind = object.isA(); kind != nullptr; kind = kind->myParent()) {
        if (kind->dxfNameBytes() != nullptr) return kind->dxfNameBytes();
    }
    return {};
}

} // namespace headless
