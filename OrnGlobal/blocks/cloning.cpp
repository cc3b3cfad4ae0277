// The parts of AcUtDb that copy entities.
#include "blocks/entity_clone.h"
#include "frame/ac_ut_db.h"
#include "frame/object_handle.h"

Acad::ErrorStatus AcUtDb::cloneObjects(const AcDbObjectIdArray& ids, const AcDbObjectId& owner,
                                       AcDbObjectIdArray& clones) {
    return cloneAndXformObjects(ids, owner, AcGeMatrix3d::kIdentity, clones);
}

Acad::ErrorStatus AcUtDb::cloneAndXformObjects(const AcDbObjectIdArray& ids,
                                               const AcDbObjectId& owner,
                                               const AcGeMatrix3d& transform,
                                               AcDbObjectIdArray& clones) {
    const WriteHandle<AcDbBlockTableRecord> block(owner);
    if (!block) return block.status();
    Acad::ErrorStatus first = Acad::eOk;
    const auto note = [&first](Acad::ErrorStatus status) {
        if (first == Acad::eOk) first = status;
        return status == Acad::eOk;
    };
    for (int i = 0; i < ids.length(); ++i) {
        const ReadHandle<AcDbEntity> entity(ids[i]);
        if (!note(entity.status())) continue;
        std::unique_ptr<AcDbEntity> copy = blocks::cloneOf(*entity);
        if (!note(copy == nullptr ? Acad::eNotApplicable : copy->transformBy(transform))) continue;
        const AcDbObjectId id = blocks::appendAndClose(*block, std::move(copy));
        if (!id.isNull()) clones.append(id);
    }
    return first;
}
