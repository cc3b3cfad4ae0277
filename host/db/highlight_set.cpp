#include "db/highlight_set.h"

#include <algorithm>

#include "db/database.h"
#include "db/entity.h"

namespace headless {

std::size_t HighlightSet::shown() const {
    const auto erased = std::ranges::count_if(ids_, [](AcDbObjectId id) { return id.isErased(); });
    return ids_.size() - static_cast<std::size_t>(erased);
}

namespace {

/// The set that an entity is to be in or not, when the path names the whole entity.
Acad::ErrorStatus findSet(const AcDbEntity& entity, const AcDbFullSubentPath& path,
                          HighlightSet*& set) {
    const AcDbObjectIdArray& ids = path.objectIds();
    const bool names = ids.isEmpty() || (ids.length() == 1 && ids[0] == entity.objectId());
    if (!names || path.subentId().type() != AcDb::kNullSubentType) return Acad::eNotApplicable;
    AcDbDatabase* const db = entity.database();
    if (db == nullptr) return Acad::eNotInDatabase;
    set = &db->highlights();
    return Acad::eOk;
}

} // namespace

} // namespace headless

Acad::ErrorStatus AcDbEntity::highlight(const AcDbFullSubentPath& path,
                                        Adesk::Boolean /*highlightAll*/) const {
    assertReadEnabled();
    headless::HighlightSet* set = nullptr;
    const Acad::ErrorStatus status = headless::findSet(*this, path, set);
    if (status == Acad::eOk) set->add(objectId());
    return status;
}

Acad::ErrorStatus AcDbEntity::unhighlight(const AcDbFullSubentPath& path,
                                          Adesk::Boolean /*highlightAll*/) const {
    assertReadEnabled();
    headless::HighlightSet* set = nullptr;
    const Acad::ErrorStatus status = headless::findSet(*this, path, set);
    if (status == Acad::eOk) set->remove(objectId());
    return status;
}
