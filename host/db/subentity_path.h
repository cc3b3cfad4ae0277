// Names of parts of entities: a face, an edge, or a thing within references.
#pragma once

#include "db/id_array.h"

namespace AcDb {

enum SubentType {
    kNullSubentType = 0,
    kFaceSubentType,
    kEdgeSubentType,
    kVertexSubentType,
    kMlineSubentCache
};

} // namespace AcDb

/// A part of one entity.
class AcDbSubentId {
public:
    AcDbSubentId() = default;
    AcDbSubentId(AcDb::SubentType type, Adesk::GsMarker index) : type_(type), index_(index) {}

    AcDb::SubentType type() const { return type_; }
    Adesk::GsMarker index() const { return index_; }

private:
    AcDb::SubentType type_ = AcDb::kNullSubentType;
    Adesk::GsMarker index_ = 0;
};

/// The way to a part: the references that hold it, the outermost first, its entity, and what of
/// that. The empty path stands for the whole of whatever is asked.
class AcDbFullSubentPath {
public:
    AcDbFullSubentPath() = default;
    AcDbFullSubentPath(const AcDbObjectId& entity, const AcDbSubentId& part) : part_(part) {
        objects_.append(entity);
    }
    AcDbFullSubentPath(const AcDbObjectIdArray& objects, const AcDbSubentId& part)
        : objects_(objects), part_(part) {}

    const AcDbObjectIdArray& objectIds() const { return objects_; }
    AcDbSubentId subentId() const { return part_; }

private:
    AcDbObjectIdArray objects_;
    AcDbSubentId part_;
};

/// The empty path.
#define kNullSubent AcDbFullSubentPath()
