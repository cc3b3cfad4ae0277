#include "db/object_state.h"

#include "db/object_data.h"
#include "db/subentities.h"

namespace headless {

std::unique_ptr<AcDbObject> ObjectState::copyOf(const AcDbObject& object) {
    const AcRxClass& kind = *object.isA();
    if (kind.stateCopier() == nullptr) return nullptr;
    std::unique_ptr<AcDbObject> state(AcDbObject::cast(kind.create()));
    if (state != nullptr) kind.stateCopier()(*state, object);
    return state;
}

void ObjectState::restore(AcDbObject& object, const AcDbObject& state) {
    object.beforeChange();
    object.beforeRestore(state);
    object.isA()->stateCopier()(object, state);
}

std::unique_ptr<AcDbObject> ObjectState::cloneOf(const AcDbObject& object) {
    std::unique_ptr<AcDbObject> clone = copyOf(object);
    if (clone == nullptr) return nullptr;
    clone->ownerId_.setNull();
    clone->extensionDictionary_.setNull();
    clone->flags_ = AcDbObject::kChanged | AcDbObject::kReshaped;
    ObjectData::detachClone(*clone, object);
    clone->becomeIndependent(object);
    if (auto* const parts = dynamic_cast<SubentityOwner*>(clone.get()))
        parts->subentities().replaceByClones();
    return clone;
}

} // namespace headless
